#include "translate/decode/detail.h"

#include "runtime/failure.h"
#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::full_hd;
using test::full_hd_lines;
using test::text_of;
using test::text_till;
using test::value_after;
using test::vga;
using test::vga_lines;

/// The text of a timing with these bytes.
std::string detail_text(const std::vector<int>& timing) {
    return text_of([&](std::string& text) {
        std::uint8_t position = 1;
        decode_detail(text, edid_of({{54, timing}}), 54, position);
    });
}

/// The timing with other values at some of its bytes.
using changes = std::vector<std::pair<std::size_t, int>>;
std::vector<int> changed(const changes& bytes, std::vector<int> timing = std::vector<int>(18)) {
    for (const auto& [n, value] : bytes)
        timing.at(n) = value;
    return timing;
}
std::string shown_value(const std::string& label, const changes& bytes) {
    return value_after(label, detail_text(changed(bytes)));
}

TEST(detail, is_shown_line_by_line) {
    EXPECT_EQ(detail_text(full_hd), full_hd_lines);
    EXPECT_EQ(detail_text(vga), vga_lines);
}

TEST(detail, is_at_its_position_from_the_start_on) {
    const edid_buffer edid = edid_of({{54, full_hd}, {72, vga}, {228, vga}});
    const auto text_at = [&](std::uint8_t start, std::uint8_t position) {
        return text_of([&](std::string& text) { decode_detail(text, edid, start, position); });
    };
    EXPECT_EQ(text_at(54, 1), full_hd_lines);
    EXPECT_EQ(text_at(54, 2), vga_lines);
    EXPECT_EQ(text_at(36, 2), full_hd_lines);
    EXPECT_EQ(text_at(228, 1), vga_lines);
    EXPECT_EQ(text_at(138, 6), vga_lines);
}

TEST(detail, lowers_its_position_in_place) {
    for (int before = 1; before <= 7; ++before) {
        auto position = static_cast<std::uint8_t>(before);
        text_of([&](std::string& text) { decode_detail(text, {}, 54, position); });
        EXPECT_EQ(position, before - 1);
    }
}

TEST(detail, fails_beyond_the_edid) {
    text_till(failure::subscript_out_of_range, [](std::string& text) {
        std::uint8_t position = 1;
        decode_detail(text, {}, 239, position);
    });
    std::uint8_t position = 1;
    text_of([&](std::string& text) { decode_detail(text, {}, 238, position); });
}

TEST(pixel_clock, has_three_decimals) {
    struct row {
        int byte_0;
        int byte_1;
        const char* clock;
    };
    const row rows[] = {
        {0xFF, 0x7F, "327.670"},
        {0x01, 0x00, "0.010"},
        {0x00, 0x00, "0.000"},
        {0x64, 0x00, "1.000"},
    };
    for (const row& r : rows)
        EXPECT_EQ(shown_value("Pixel Clock(MHz) = ", {{0, r.byte_0}, {1, r.byte_1}}), r.clock);
}

TEST(pixel_clock, fails_after_its_label_from_327_68_mhz_on) {
    for (const int byte_1 : {0x80, 0xFF}) {
        const auto decode = [&](std::string& text) {
            std::uint8_t position = 1;
            decode_detail(text, edid_of({{54, full_hd}, {54, {0, byte_1}}}), 54, position);
        };
        EXPECT_EQ(text_till(failure::overflow, decode), "Pixel Clock(MHz) = ");
    }
}

TEST(pixel_clock, reports_which_one_does_not_fit) {
    std::string text;
    std::uint8_t position = 1;
    EXPECT_EQ(test::sentence_of([&] {
                  decode_detail(text, edid_of({{54, {0x4D, 0xD0}}}), 54, position);
              }),
              "a pixel clock of 533.25 MHz does not fit.");
    EXPECT_EQ(position, 0) << "lowered all the same";
}

TEST(figures, are_put_together_from_their_bytes) {
    struct row {
        const char* label;
        changes bytes;
        const char* pair;
    };
    const std::vector<row> rows = {
        {"H/V Active =", {{2, 0xFF}, {5, 0x01}}, " 255 / 1"},
        {"H/V Active =", {{4, 0x10}, {7, 0xF0}}, " 256 / 3840"},
        {"H/V Active =", {{4, 0x0F}, {7, 0x0F}}, " 0 / 0"},
        {"H/V Active =", {{2, 0xFF}, {4, 0xFF}, {5, 0xFF}, {7, 0xFF}}, " 4095 / 4095"},
        {"H/V Blanking =", {{3, 0xFE}, {6, 0x02}}, " 254 / 2"},
        {"H/V Blanking =", {{4, 0x0F}, {7, 0x01}}, " 3840 / 256"},
        {"H/V Blanking =", {{4, 0xF0}, {7, 0xF0}}, " 0 / 0"},
        {"H/V Blanking =", {{3, 0xFF}, {4, 0xFF}, {6, 0xFF}, {7, 0xFF}}, " 4095 / 4095"},
        {"H/V Sync Offset =", {{8, 0x58}, {10, 0x40}}, " 88 / 4"},
        {"H/V Sync Offset =", {{11, 0xC0}}, " 768 / 0"},
        {"H/V Sync Offset =", {{11, 0x40}}, " 256 / 0"},
        {"H/V Sync Offset =", {{11, 0x0C}}, " 0 / 48"},
        {"H/V Sync Offset =", {{11, 0x04}}, " 0 / 16"},
        {"H/V Sync Offset =", {{8, 0xFF}, {10, 0xFF}, {11, 0xFF}}, " 1023 / 63"},
        {"H/V Sync Offset =", {{10, 0x0F}, {11, 0x33}}, " 0 / 0"},
        {"H/V Sync Width =", {{9, 0x2C}, {10, 0x05}}, " 44 / 5"},
        {"H/V Sync Width =", {{11, 0x30}}, " 768 / 0"},
        {"H/V Sync Width =", {{11, 0x10}}, " 256 / 0"},
        {"H/V Sync Width =", {{9, 0xFF}, {11, 0x30}}, " 1023 / 0"},
        {"H/V Sync Width =", {{10, 0x1F}, {11, 0x03}}, " 0 / 15"}, // the mask takes the upper bits too
        {"H/V Sync Width =", {{10, 0xF0}, {11, 0xCF}}, " 0 / 0"},
        {"H/V Image Size(mm) =", {{12, 0xFE}, {13, 0x22}}, " 254 / 34"},
        {"H/V Image Size(mm) =", {{14, 0x10}}, " 256 / 0"},
        {"H/V Image Size(mm) =", {{14, 0x01}}, " 0 / 256"},
        {"H/V Image Size(mm) =", {{12, 0xFF}, {13, 0xFF}, {14, 0xFF}}, " 4095 / 4095"},
    };
    for (const row& r : rows)
        EXPECT_EQ(shown_value(r.label, r.bytes), r.pair) << r.label;
}

TEST(borders, are_not_read) { EXPECT_EQ(detail_text(changed({{15, 0xFF}, {16, 0xFF}}, full_hd)), full_hd_lines); }

TEST(scanning_mode, is_the_highest_bit) {
    EXPECT_EQ(shown_value("Scanning Mode = ", {{17, 0x80}}), "Interlace");
    EXPECT_EQ(shown_value("Scanning Mode = ", {{17, 0x7F}}), "Non interlace");
}

TEST(stereo, never_comes_up) {
    for (int f = 0; f < 256; ++f)
        EXPECT_EQ(shown_value("Stereo = ", {{17, f}}), "Normal display no stereo") << f;
}

TEST(sync, is_described_by_four_bits) {
    const std::string composite[] = {"SOG", "Sync All", "SOG with Serration", "Sync All with Serration"};
    const std::string digital[] = {"", "", "Sync Locate = with Serration\r\n", "Sync Locate = with Serration\r\n"};
    const std::string signs[] = {"Negative", "Positve"};
    for (int bits = 0; bits < 4; ++bits) {
        const std::string& sign = signs[bits % 2];
        const std::string shown[] = {
            "Analog Composite\r\nSync Locate = " + composite[bits],
            "Bipolar Analog Composite\r\nSync Locate = " + composite[bits],
            "Digital Composite\r\n" + digital[bits] + "Sync Polarity = " + sign,
            "Digital Seperate\r\nH/V Sync Polarity = " + sign + (bits / 2 == 0 ? "/Negative" : "/Positive"),
        };
        for (int type = 0; type < 4; ++type) {
            for (const int others : {0x00, 0x01, 0x60, 0xE1}) {
                const std::string text = detail_text(changed({{17, type * 8 + bits * 2 + others}}));
                EXPECT_EQ(text.substr(text.find("Sync Type")), "Sync Type = " + shown[type]) << type << ' ' << bits;
            }
        }
    }
}

} // namespace
} // namespace desk
