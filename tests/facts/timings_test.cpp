#include "edid/facts/dmt_table.h"
#include "edid/facts/formula_timing.h"
#include "edid/facts/vic_table.h"
#include "support/display_edid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace desk::facts {
namespace {

using test::display_edid;
using test::findings_about;
using test::list_of_findings;
using bytes = display_edid::bytes;

std::vector<video_mode> modes_from(const display_facts& f, mode_source source) {
    std::vector<video_mode> modes;
    std::copy_if(f.modes.begin(), f.modes.end(), std::back_inserter(modes),
                 [&](const video_mode& m) { return m.source == source; });
    return modes;
}

TEST(detailed_timing, has_its_raster) {
    const display_facts f = display_edid().facts();
    ASSERT_EQ(f.detailed_timings.size(), 1U);
    const detailed_timing& t = f.detailed_timings[0];
    EXPECT_EQ(t.pixel_clock_khz, 148500U);
    EXPECT_EQ(t.h_active, 1920U);
    EXPECT_EQ(t.h_blank, 280U);
    EXPECT_EQ(t.h_front, 88U);
    EXPECT_EQ(t.h_sync, 44U);
    EXPECT_EQ(t.v_active, 1080U);
    EXPECT_EQ(t.v_blank, 45U);
    EXPECT_EQ(t.v_front, 4U);
    EXPECT_EQ(t.v_sync, 5U);
    EXPECT_EQ(t.width_mm, 600U);
    EXPECT_EQ(t.height_mm, 340U);
    EXPECT_FALSE(t.interlaced);
    EXPECT_TRUE(t.preferred);
    EXPECT_EQ(t.sync, "digital separate");
    EXPECT_EQ(t.h_sync_positive, true);
    EXPECT_EQ(t.v_sync_positive, true);
    EXPECT_DOUBLE_EQ(t.h_khz(), 67.5);
    EXPECT_DOUBLE_EQ(t.refresh_hz(), 60);
    EXPECT_EQ(t.vic, 16);
    EXPECT_EQ(t.dmt, 0x52);
}

TEST(detailed_timing, has_the_high_bits_of_each_figure) {
    // all of the high bits, and no low ones
    const display_facts f =
        display_edid().put(54, {0, 0x01, 0, 0, 0xFF, 0, 0, 0xFF, 0, 0, 0, 0xFF, 0, 0, 0xFF, 3, 5, 0}).facts();
    const detailed_timing& t = f.detailed_timings.at(0);
    EXPECT_EQ(t.pixel_clock_khz, 2560U);
    EXPECT_EQ(t.h_active, 0xF00U);
    EXPECT_EQ(t.h_blank, 0xF00U);
    EXPECT_EQ(t.v_active, 0xF00U);
    EXPECT_EQ(t.v_blank, 0xF00U);
    EXPECT_EQ(t.h_front, 0x300U);
    EXPECT_EQ(t.h_sync, 0x300U);
    EXPECT_EQ(t.v_front, 0x30U);
    EXPECT_EQ(t.v_sync, 0x30U);
    EXPECT_EQ(t.width_mm, 0xF00U);
    EXPECT_EQ(t.height_mm, 0xF00U);
    EXPECT_EQ(t.h_border, 3U);
    EXPECT_EQ(t.v_border, 5U);
    EXPECT_EQ(t.sync, "analog composite");
}

TEST(detailed_timing, has_stereo_by_three_bits_of_its_flags) {
    const std::vector<std::pair<std::uint8_t, std::string>> stereo = {
        {0x1E, ""},
        {0x1F, ""},
        {0x3E, "field sequential, right image first"},
        {0x5E, "field sequential, left image first"},
        {0x3F, "two-way interleaved, right image on even lines"},
        {0x5F, "two-way interleaved, left image on even lines"},
        {0x7E, "four-way interleaved"},
        {0x7F, "side by side interleaved"}};
    for (const auto& [flags, text] : stereo)
        EXPECT_EQ(display_edid().put(71, {flags}).facts().detailed_timings.at(0).stereo, text) << int{flags};
}

/// 1920x1080 interlaced at 60 fields a second, 74.25 MHz.
const bytes interlaced_hd = {0x01, 0x1D, 0x80, 0x18, 0x71, 0x1C, 0x16, 0x20, 0x58,
                             0x2C, 0x25, 0x00, 0x58, 0x54, 0x21, 0,    0,    0x9E};

TEST(detailed_timing, counts_the_lines_of_one_field_if_it_is_interlaced) {
    const display_facts f = display_edid().put(54, interlaced_hd).facts();
    const detailed_timing& t = f.detailed_timings.at(0);
    EXPECT_TRUE(t.interlaced);
    EXPECT_EQ(t.v_active, 540U);
    EXPECT_EQ(t.v_blank, 22U);
    EXPECT_DOUBLE_EQ(t.refresh_hz(), 60);
    EXPECT_EQ(t.vic, 5);
    EXPECT_EQ(modes_from(f, mode_source::detailed).at(0).height, 1080U);
}

TEST(detailed_timing, has_the_code_whose_aspect_ratio_is_nearest) {
    // 720x480 at 27 MHz: the code 2 is 4:3, the code 3 16:9
    bytes sd = {0x8C, 0x0A, 0xD0, 0x8A, 0x20, 0xE0, 0x2D, 0x10, 0x10, 0x3E, 0x96, 0x00, 0x90, 0x2C, 0x11, 0, 0, 0x18};
    EXPECT_EQ(display_edid().put(54, sd).facts().detailed_timings.at(0).vic, 2);
    sd[13] = 0xE1;
    sd[14] = 0x10;
    EXPECT_EQ(display_edid().put(54, sd).facts().detailed_timings.at(0).vic, 3);
}

TEST(detailed_timing, has_the_code_at_either_rate) {
    // 148.35 MHz: 59.94 Hz
    EXPECT_EQ(display_edid().put(54, {0xF3, 0x39}).facts().detailed_timings.at(0).vic, 16);
    EXPECT_EQ(display_edid().put(54, {0x00, 0x39}).facts().detailed_timings.at(0).vic, 0);
}

TEST(detailed_timing, that_is_impossible_is_found) {
    struct change {
        std::size_t offset;
        bytes values;
        const char* fault;
    };
    const std::vector<change> changes = {{56, {0, 0x18, 0x01}, "no active pixels"},
                                         {57, {0, 0x70}, "no horizontal blanking"},
                                         {60, {0, 0x40}, "no vertical blanking"},
                                         {63, {0}, "horizontal sync pulse without width"},
                                         {64, {0x40}, "vertical sync pulse without width"},
                                         {62, {255}, "horizontal sync pulse that ends"},
                                         {64, {0xFF, 0x04}, "vertical sync pulse that ends"},
                                         {54, {1, 0}, "has a refresh rate of"}};
    for (const change& c : changes) {
        const display_facts f = display_edid().put(c.offset, c.values).facts();
        const auto found = findings_about(f, c.fault);
        ASSERT_EQ(found.size(), 1U) << c.fault << "\n" << list_of_findings(f);
        EXPECT_EQ(found[0].level, severity::error);
        EXPECT_EQ(found[0].offset, 54);
    }
}

TEST(established_timings, are_in_the_order_of_their_bits) {
    const display_facts f = display_edid().put(35, {0xFF, 0xFF, 0x80}).facts();
    struct expected {
        std::uint32_t width, height;
        int hz;
        bool interlaced;
    };
    const std::vector<expected> all = {{720, 400, 70, false},   {720, 400, 88, false},  {640, 480, 60, false},
                                       {640, 480, 67, false},   {640, 480, 73, false},  {640, 480, 75, false},
                                       {800, 600, 56, false},   {800, 600, 60, false},  {800, 600, 72, false},
                                       {800, 600, 75, false},   {832, 624, 75, false},  {1024, 768, 87, true},
                                       {1024, 768, 60, false},  {1024, 768, 70, false}, {1024, 768, 75, false},
                                       {1280, 1024, 75, false}, {1152, 870, 75, false}};
    const auto modes = modes_from(f, mode_source::established);
    ASSERT_EQ(modes.size(), all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(modes[i].width, all[i].width) << i;
        EXPECT_EQ(modes[i].height, all[i].height) << i;
        EXPECT_EQ(std::lround(modes[i].refresh_hz), all[i].hz) << i;
        EXPECT_EQ(modes[i].interlaced, all[i].interlaced) << i;
        EXPECT_EQ(modes[i].where.offset, 35 + i / 8) << i;
    }
}

TEST(established_timings_iii, are_in_the_order_of_their_bits) {
    // first, ninth and last bit: 640x350 at 85, 1280x768 at 60 with reduced blanking, 1920x1440 at 75
    const bytes descriptor = {0, 0, 0, 0xF7, 0, 10, 0x80, 0x80, 0, 0, 0, 0x10, 0, 0, 0, 0, 0, 0};
    const auto modes = modes_from(display_edid(4).put(108, descriptor).facts(), mode_source::established_iii);
    ASSERT_EQ(modes.size(), 3U);
    EXPECT_EQ(modes[0].dmt, 0x01);
    EXPECT_EQ(modes[1].dmt, 0x16);
    EXPECT_TRUE(modes[1].reduced_blanking);
    EXPECT_EQ(modes[2].dmt, 0x4A);
}

TEST(standard_timings, have_width_aspect_and_rate) {
    const display_facts f =
        display_edid().put(38, {0xD1, 0xC0, 0x81, 0x80, 0x61, 0x40, 0x95, 0x00, 0xA9, 0xC0, 0x3B, 0x7D}).facts();
    const auto modes = modes_from(f, mode_source::standard);
    ASSERT_EQ(modes.size(), 6U);
    EXPECT_EQ(modes[0].dmt, 0x52); // 1920x1080
    EXPECT_EQ(modes[1].dmt, 0x23); // 1280x1024
    EXPECT_EQ(modes[2].dmt, 0x10); // 1024x768
    EXPECT_EQ(modes[3].dmt, 0x2F); // 1440x900 without reduced blanking
    EXPECT_EQ(modes[4].dmt, 0x53); // 1600x900 has reduced blanking alone
    EXPECT_EQ(modes[5].dmt, 0);
    EXPECT_EQ(modes[5].width, 720U);
    EXPECT_EQ(modes[5].height, 540U);
    EXPECT_NEAR(modes[5].refresh_hz, 121, 0.01);
}

TEST(standard_timings, are_square_instead_of_16_to_10_before_1_3) {
    EXPECT_EQ(modes_from(display_edid(3).put(38, {0x81, 0x00}).facts(), mode_source::standard).at(0).height, 800U);
    EXPECT_EQ(modes_from(display_edid(2).put(38, {0x81, 0x00}).facts(), mode_source::standard).at(0).height, 1280U);
}

TEST(standard_timings, follow_a_formula_if_they_are_not_listed) {
    // 1600x1000 at 60 Hz
    EXPECT_EQ(modes_from(display_edid(3).put(38, {0xA9, 0x00}).facts(), mode_source::standard).at(0).formula, "GTF");
    EXPECT_EQ(modes_from(display_edid(4).put(38, {0xA9, 0x00}).facts(), mode_source::standard).at(0).formula, "CVT");
}

TEST(cvt_codes, have_a_mode_for_each_rate) {
    // 1440 lines, 16:9, preferred 60 Hz; 50 Hz, 60 Hz and 60 Hz with reduced blanking
    const bytes descriptor = {0, 0, 0, 0xF8, 0, 1, 0xCF, 0x24, 0x39, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const auto modes = modes_from(display_edid(4).put(108, descriptor).facts(), mode_source::cvt_code);
    ASSERT_EQ(modes.size(), 3U);
    for (const video_mode& m : modes) {
        EXPECT_EQ(m.width, 2560U);
        EXPECT_EQ(m.height, 1440U);
    }
    EXPECT_NEAR(modes[0].refresh_hz, 50, 0.1);
    EXPECT_NEAR(modes[1].refresh_hz, 60, 0.1);
    EXPECT_TRUE(modes[1].native);
    EXPECT_TRUE(modes[2].reduced_blanking);
    EXPECT_EQ(modes[2].pixel_clock_khz, 241500U) << "as in VESA's list of CVT timings";
}

TEST(gtf, has_the_figures_of_the_standard) {
    // 1024x768 at 60 Hz has a clock of 64.11 MHz
    const formula_timing t = gtf_timing(1024, 768, 60);
    EXPECT_EQ(t.h_total, 1344U);
    EXPECT_EQ(t.v_total, 795U);
    EXPECT_NEAR(t.pixel_clock_khz, 64110, 5);
    EXPECT_NEAR(t.refresh_hz(), 60, 0.001);
}

TEST(cvt, has_the_figures_of_the_timings_in_vesas_list_that_follow_it) {
    // those whose normal and reduced forms are CVT timings
    const std::vector<std::pair<std::uint8_t, int>> normal = {{0x1C, 60}, {0x2A, 60}, {0x2B, 75}, {0x2F, 60},
                                                              {0x30, 75}, {0x3A, 60}, {0x3B, 75}, {0x45, 60},
                                                              {0x46, 75}, {0x4D, 60}, {0x4E, 75}, {0x4F, 85}};
    for (const auto& [id, hz] : normal) {
        const dmt_timing& listed = *timing_of_dmt(id);
        const formula_timing t = cvt_timing(listed.h_active, listed.v_active, hz, blanking::normal);
        EXPECT_EQ(t.h_total, listed.h_total) << int{id};
        EXPECT_EQ(t.v_total, listed.v_total) << int{id};
        EXPECT_EQ(t.pixel_clock_khz, listed.pixel_clock_khz) << int{id};
    }
    for (const int id : {0x29, 0x2E, 0x39, 0x44, 0x4C}) {
        const dmt_timing& listed = *timing_of_dmt(static_cast<std::uint8_t>(id));
        const formula_timing t = cvt_timing(listed.h_active, listed.v_active, 60, blanking::reduced);
        EXPECT_EQ(t.h_total, listed.h_total) << int{id};
        EXPECT_EQ(t.v_total, listed.v_total) << int{id};
        EXPECT_EQ(t.pixel_clock_khz, listed.pixel_clock_khz) << int{id};
    }
    // reduced blanking version 2
    const dmt_timing& uhd = *timing_of_dmt(0x57);
    const formula_timing t = cvt_timing(4096, 2160, 60, blanking::reduced_2);
    EXPECT_EQ(t.h_total, uhd.h_total);
    EXPECT_EQ(t.v_total, uhd.v_total);
    EXPECT_EQ(t.pixel_clock_khz, uhd.pixel_clock_khz);
}

TEST(formulas, give_nothing_for_what_can_not_be) {
    EXPECT_EQ(cvt_timing(0, 100, 60, blanking::normal).v_total, 0U);
    EXPECT_EQ(cvt_timing(100, 100, 0, blanking::reduced).v_total, 0U);
    EXPECT_EQ(cvt_timing(100, 100, 2000, blanking::normal).v_total, 0U);
    EXPECT_EQ(gtf_timing(100, 100, 2000).v_total, 0U);
}

TEST(dmt_table, has_each_id_at_its_place) {
    for (int id = 1; id <= 0x58; ++id) {
        const dmt_timing* const t = timing_of_dmt(static_cast<std::uint8_t>(id));
        ASSERT_NE(t, nullptr) << id;
        EXPECT_EQ(t->id, id);
        EXPECT_GT(t->h_total, t->h_active);
        EXPECT_GT(t->v_total, t->v_active);
    }
    EXPECT_EQ(timing_of_dmt(0), nullptr);
    EXPECT_EQ(timing_of_dmt(0x59), nullptr);
}

TEST(vic_table, has_the_codes_1_to_127_and_193_to_219) {
    for (int vic = 0; vic <= 255; ++vic) {
        const vic_timing* const t = timing_of_vic(static_cast<std::uint8_t>(vic));
        const bool assigned = (vic >= 1 && vic <= 127) || (vic >= 193 && vic <= 219);
        ASSERT_EQ(t != nullptr, assigned) << vic;
        if (t == nullptr) continue;
        EXPECT_EQ(t->vic, vic);
    }
}

/// Rates of CTA-861 in fields or frames a second.
TEST(vic_table, has_a_rate_of_the_standard_for_each_code) {
    const std::vector<double> rates = {24, 25, 30, 48, 50, 60, 100, 120, 200, 240};
    for (int vic = 1; vic <= 219; ++vic) {
        const vic_timing* const t = timing_of_vic(static_cast<std::uint8_t>(vic));
        if (t == nullptr) continue;
        const double rate = t->pixel_clock_khz * 1000.0 / t->h_total / t->v_total * (t->interlaced ? 2 : 1);
        const bool known = std::any_of(rates.begin(), rates.end(), [&](double r) {
            return std::fabs(rate - r) < 0.3 || std::fabs(rate - r * 1000 / 1001) < 0.001;
        });
        EXPECT_TRUE(known) << vic << ": " << rate;
    }
}

TEST(vic_table, has_the_sizes_of_the_standard) {
    struct expected {
        std::uint8_t vic;
        int width, height;
        bool interlaced;
        int hz;
    };
    for (const expected& e : {expected{1, 640, 480, false, 60},
                              {5, 1920, 1080, true, 60},
                              {16, 1920, 1080, false, 60},
                              {31, 1920, 1080, false, 50},
                              {32, 1920, 1080, false, 24},
                              {63, 1920, 1080, false, 120},
                              {93, 3840, 2160, false, 24},
                              {97, 3840, 2160, false, 60},
                              {102, 4096, 2160, false, 60},
                              {118, 3840, 2160, false, 120},
                              {126, 5120, 2160, false, 60},
                              {199, 7680, 4320, false, 60},
                              {217, 10240, 4320, false, 120},
                              {219, 4096, 2160, false, 120}}) {
        const vic_timing& t = *timing_of_vic(e.vic);
        EXPECT_EQ(t.h_active, e.width) << int{e.vic};
        EXPECT_EQ(t.v_active, e.height) << int{e.vic};
        EXPECT_EQ(t.interlaced, e.interlaced) << int{e.vic};
        EXPECT_EQ(std::lround(t.pixel_clock_khz * 1000.0 / t.h_total / t.v_total * (t.interlaced ? 2 : 1)), e.hz)
            << int{e.vic};
    }
}

} // namespace
} // namespace desk::facts
