#include "support/display_edid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace desk::facts {
namespace {

using test::display_edid;
using test::findings_about;
using test::list_of_findings;
using bytes = display_edid::bytes;

TEST(base_block, has_nothing_to_find_in_a_correct_edid) {
    for (const std::uint8_t revision : {std::uint8_t{3}, std::uint8_t{4}})
        EXPECT_EQ(list_of_findings(display_edid(revision).facts()), "");
}

TEST(base_block, has_maker_product_serial_number_and_date) {
    const display_facts f = display_edid().facts();
    // 0x10AC: D = 4, E = 5, L = 12 in five bits each
    EXPECT_EQ(f.maker, "DEL");
    EXPECT_EQ(f.maker_name, "Dell Inc.");
    EXPECT_EQ(f.product_code, 0x1234);
    EXPECT_EQ(f.serial_number, 0x12345678U);
    EXPECT_EQ(f.week, 10);
    EXPECT_EQ(f.year, 2020);
    EXPECT_FALSE(f.is_model_year);
    EXPECT_EQ(f.version, 1);
    EXPECT_EQ(f.revision, 3);
}

TEST(base_block, can_lack_serial_number_and_week) {
    const display_facts f = display_edid().put(12, {0, 0, 0, 0, 0}).facts();
    EXPECT_EQ(f.serial_number, std::nullopt);
    EXPECT_EQ(f.week, std::nullopt);
    EXPECT_EQ(f.year, 2020);
}

TEST(base_block, can_have_a_model_year) {
    const display_facts f = display_edid(4).put(16, {0xFF}).facts();
    EXPECT_TRUE(f.is_model_year);
    EXPECT_EQ(f.week, std::nullopt);
    EXPECT_EQ(f.year, 2020);
    EXPECT_EQ(list_of_findings(f), "");
}

TEST(base_block, keeps_an_invalid_maker) {
    // 0: before A; 27: after Z
    const display_facts f = display_edid().put(8, {0x00, 0x1B}).facts();
    EXPECT_EQ(f.maker, "@@[");
    EXPECT_EQ(f.maker_name, "");
    EXPECT_EQ(findings_about(f, "three letters").size(), 1U);
}

TEST(base_block, reports_a_maker_that_is_not_listed) {
    const display_facts f = display_edid().put(8, {0x47, 0x51}).facts();
    EXPECT_EQ(f.maker, "QZQ");
    ASSERT_EQ(findings_about(f, "not in the list").size(), 1U);
    EXPECT_EQ(findings_about(f, "not in the list")[0].level, severity::note);
}

TEST(base_block, has_size_or_aspect) {
    const display_facts f = display_edid().facts();
    EXPECT_EQ(f.width_cm, 60);
    EXPECT_EQ(f.height_cm, 34);
    EXPECT_EQ(f.aspect, std::nullopt);
    // E-EDID 1.4, 3.6.2: 79 stands for 16:9 = 1.78, in landscape or portrait
    const display_facts landscape = display_edid(4).put(21, {79, 0}).facts();
    EXPECT_NEAR(landscape.aspect.value(), 1.78, 1e-9);
    EXPECT_EQ(landscape.width_cm, std::nullopt);
    EXPECT_EQ(landscape.height_cm, std::nullopt);
    EXPECT_NEAR(display_edid(4).put(21, {0, 79}).facts().aspect.value(), 1 / 1.78, 1e-9);
    EXPECT_EQ(display_edid().put(21, {0, 0}).facts().width_cm, std::nullopt);
    EXPECT_EQ(findings_about(display_edid().put(21, {79, 0}).facts(), "width and height").size(), 1U);
}

TEST(base_block, has_gamma) {
    EXPECT_EQ(display_edid().facts().gamma, 2.2);
    EXPECT_EQ(display_edid().put(23, {0}).facts().gamma, 1.0);
    EXPECT_EQ(display_edid().put(23, {254}).facts().gamma, 3.54);
    EXPECT_EQ(display_edid().put(23, {255}).facts().gamma, std::nullopt);
}

TEST(base_block, has_the_digital_input_of_1_4) {
    const display_facts f = display_edid(4).facts();
    EXPECT_TRUE(f.digital);
    EXPECT_EQ(f.digital_interface.bits_per_color, 8);
    EXPECT_EQ(f.digital_interface.interface, "DisplayPort");
    EXPECT_EQ(display_edid(4).put(20, {0xE2}).facts().digital_interface.bits_per_color, 16);
    EXPECT_EQ(display_edid(4).put(20, {0xE2}).facts().digital_interface.interface, "HDMI-a");
    EXPECT_EQ(display_edid(4).put(20, {0x80}).facts().digital_interface.bits_per_color, 0);
    EXPECT_EQ(findings_about(display_edid(4).put(20, {0xF6}).facts(), "reserved value").size(), 2U);
}

TEST(base_block, has_no_depth_before_1_4) {
    const display_facts f = display_edid().put(20, {0x81}).facts();
    EXPECT_EQ(f.digital_interface.interface, "DFP 1.x");
    EXPECT_EQ(f.digital_interface.bits_per_color, 0);
    EXPECT_EQ(findings_about(display_edid().put(20, {0xA5}).facts(), "video input").size(), 1U);
}

TEST(base_block, has_the_analog_input) {
    const display_facts f = display_edid().put(20, {0x68}).facts();
    EXPECT_FALSE(f.digital);
    EXPECT_EQ(f.analog.levels, "0.700 V, 0.000 V, 0.700 V p-p");
    EXPECT_TRUE(f.analog.separate_sync);
    EXPECT_FALSE(f.analog.blank_to_black);
    EXPECT_FALSE(f.analog.composite_sync);
    EXPECT_FALSE(f.analog.sync_on_green);
    EXPECT_FALSE(f.analog.serrated_sync);
}

TEST(base_block, has_features) {
    const display_facts f = display_edid(4).put(24, {0xF9}).facts();
    EXPECT_TRUE(f.power.standby && f.power.suspend && f.power.active_off);
    EXPECT_TRUE(f.ycbcr444 && f.ycbcr422);
    EXPECT_TRUE(f.continuous_frequency);
    EXPECT_FALSE(f.srgb_default || f.preferred_is_native);
    EXPECT_EQ(display_edid().put(24, {0x0A}).facts().color_type, "RGB");
    EXPECT_EQ(display_edid().put(24, {0x02}).facts().color_type, "monochrome");
}

TEST(base_block, has_colour_coordinates_of_ten_bits) {
    const auto c = display_edid().facts().colors.value();
    // the high eight bits of each, and two low ones from 0xEE (red and green) and 0x95 (blue and white)
    EXPECT_EQ(c.red.x, (0xA9 * 4 + 3) / 1024.0);
    EXPECT_EQ(c.red.y, (0x54 * 4 + 2) / 1024.0);
    EXPECT_EQ(c.green.x, (0x4C * 4 + 3) / 1024.0);
    EXPECT_EQ(c.green.y, (0x99 * 4 + 2) / 1024.0);
    EXPECT_EQ(c.blue.x, (0x26 * 4 + 2) / 1024.0);
    EXPECT_EQ(c.blue.y, (0x0F * 4 + 1) / 1024.0);
    EXPECT_EQ(c.white.x, (0x50 * 4 + 1) / 1024.0);
    EXPECT_EQ(c.white.y, (0x54 * 4 + 1) / 1024.0);
    EXPECT_EQ(display_edid().put(25, bytes(10)).facts().colors, std::nullopt);
}

TEST(base_block, compares_the_srgb_flag_with_the_colours) {
    // sRGB: red 655, 338; green 307, 614; blue 154, 61; white 320, 337 of 1024
    const bytes srgb = {0xEE, 0x91, 0xA3, 0x54, 0x4C, 0x99, 0x26, 0x0F, 0x50, 0x54};
    EXPECT_EQ(findings_about(display_edid().put(25, srgb).facts(), "flag is not set").size(), 1U);
    EXPECT_EQ(findings_about(display_edid().put(25, srgb).put(24, {0x0E}).facts(), "sRGB").size(), 0U);
    const bytes wide = {0xEE, 0x91, 0xAE, 0x4D, 0x43, 0xB0, 0x26, 0x0F, 0x50, 0x54};
    EXPECT_EQ(findings_about(display_edid().put(25, wide).put(24, {0x0E}).facts(), "flag is set").size(), 1U);
}

TEST(base_block, reports_colours_that_can_not_be) {
    const bytes outside = {0, 0, 0xFF, 0xFF, 0x4C, 0x99, 0x26, 0x0F, 0x50, 0x54};
    EXPECT_EQ(findings_about(display_edid().put(25, outside).facts(), "outside the CIE").size(), 1U);
    const bytes one_point = {0, 0, 0x50, 0x50, 0x50, 0x50, 0x50, 0x50, 0x50, 0x50};
    EXPECT_EQ(findings_about(display_edid().put(25, one_point).facts(), "no triangle").size(), 1U);
}

struct fault {
    std::uint8_t revision;
    std::size_t offset;
    bytes values;
    std::string text; ///< a part of the finding's
    severity level;
    std::size_t found_at; ///< its offset
};

class faults_of_base_block : public testing::TestWithParam<fault> {};

TEST_P(faults_of_base_block, are_found) {
    const fault& p = GetParam();
    const display_facts f = display_edid(p.revision).put(p.offset, p.values).facts();
    const auto found = findings_about(f, p.text);
    ASSERT_EQ(found.size(), 1U) << list_of_findings(f);
    EXPECT_EQ(found[0].level, p.level);
    EXPECT_EQ(found[0].block, 0);
    EXPECT_EQ(found[0].offset, p.found_at);
    EXPECT_FALSE(found[0].clause.empty());
}

INSTANTIATE_TEST_SUITE_P(
    all, faults_of_base_block,
    testing::Values(fault{3, 3, {0xFE}, "header", severity::error, 3},
                    fault{3, 18, {2}, "EDID version 2.3", severity::error, 18},
                    fault{3, 16, {55}, "week 55", severity::warning, 16},
                    fault{3, 16, {0xFF}, "model year", severity::warning, 16},
                    fault{4, 17, {15}, "year 2005", severity::warning, 17},
                    fault{3, 24, {0x08}, "not marked as the preferred", severity::warning, 24},
                    fault{3, 38, {0, 0}, "00 00 instead of 01 01", severity::warning, 38},
                    fault{3, 40, {0, 5}, "reserved byte 00", severity::warning, 40},
                    fault{3, 126, {1}, "counts 1 extension blocks, but there are 0", severity::error, 126},
                    fault{3, 54, {0, 0}, "first descriptor", severity::error, 54},
                    fault{3, 72, display_edid::full_hd(), "range limits are missing", severity::warning, 54},
                    fault{3, 90, display_edid::full_hd(), "name is missing", severity::warning, 54},
                    fault{3, 90, display_edid::full_hd(), "follows a display descriptor", severity::warning, 90},
                    fault{3, 108, display_edid::text_descriptor(0xFC, "MORE"), "second name", severity::warning, 108},
                    fault{3, 108, display_edid::limits(), "second descriptor of range limits", severity::warning, 108},
                    fault{3, 108, {0, 0, 0, 0x20}, "reserved tag", severity::warning, 111},
                    fault{3, 110, {1}, "reserved byte of a display descriptor", severity::warning, 108},
                    fault{3, 120, {1}, "dummy descriptor", severity::warning, 120},
                    fault{3, 76, {1}, "need EDID 1.4", severity::warning, 76},
                    fault{3, 77, {80, 70}, "above its maximum", severity::error, 77},
                    fault{3, 77, {0}, "minimum of the range limits is 0", severity::warning, 77},
                    fault{3, 82, {3}, "unknown formula", severity::warning, 82},
                    fault{3, 83, {0}, "line feed and spaces", severity::note, 83},
                    fault{3, 82, {1}, "\"Limits only\"", severity::warning, 82},
                    fault{3, 78, {55}, "refresh rate of the detailed timing 1920x1080 at 60 Hz", severity::warning, 54},
                    fault{3, 80, {50}, "line rate of the detailed timing", severity::warning, 54},
                    fault{3, 81, {14}, "pixel clock of the detailed timing", severity::warning, 54},
                    fault{3, 101, {'X'}, "not filled up with spaces", severity::warning, 95},
                    fault{3, 95, {0x1B}, "not printable", severity::warning, 95},
                    fault{3, 95, {'\n', ' ', ' ', ' ', ' '}, "text is empty", severity::warning, 95},
                    fault{3, 95, {'T', ' ', ' ', ' ', ' '}, "no line feed", severity::warning, 95},
                    fault{3, 66, {0x70}, "larger than the display", severity::warning, 66}));

} // namespace
} // namespace desk::facts
