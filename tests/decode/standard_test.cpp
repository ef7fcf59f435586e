#include "translate/decode/standard.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::edid_of;
using test::failure_of;
using test::text_of;

std::string standard_text(int b0, int b1) {
    return text_of([&](std::string& text) { decode_standard(text, edid_of({{38, {b0, b1}}}), 38); });
}
std::string standard_lines(const std::string& width, const std::string& height, const std::string& ratio,
                           const std::string& rate) {
    return "Horizontal Active Pixel = " + width + "\r\nVertical Active Pixel = " + height +
           "\r\nImage Aspect Ratio = " + ratio + "\r\nRefresh Rate = " + rate;
}

struct standard_row {
    int b0;
    int b1;
    const char* width;
    const char* height;
    const char* ratio;
    const char* rate;
};

const standard_row standard_rows[] = {
    {0xD1, 0xC0, "1920", "1080", "16:9", "60"},  {0x81, 0x80, "1280", "1024", "5:4", "60"},
    {0x71, 0x80, "1152", "921.6", "5:4", "60"}, // not rounded
    {0x61, 0x40, "1024", "768", "4:3", "60"},    {0xB3, 0x00, "1680", "1050", "16:10", "60"},
    {0xD1, 0x0F, "1920", "1200", "16:10", "75"}, {0x31, 0x7F, "640", "480", "4:3", "123"},  // the highest rate
    {0x32, 0xC1, "648", "364.5", "16:9", "61"},  {0x01, 0x01, "256", "160", "16:10", "61"}, // an unused place
    {0x00, 0x00, "248", "155", "16:10", "60"},   {0x00, 0xC0, "248", "139.5", "16:9", "60"},
    {0x00, 0x80, "248", "198.4", "5:4", "60"},   {0xFF, 0xFF, "2288", "1287", "16:9", "123"},
    {0xFF, 0x00, "2288", "1430", "16:10", "60"}, {0xFA, 0x00, "2248", "1405", "16:10", "60"}, // the tag of a descriptor
};

TEST(standard_timing, is_two_bytes) {
    for (const standard_row& r : standard_rows)
        EXPECT_EQ(standard_text(r.b0, r.b1), standard_lines(r.width, r.height, r.ratio, r.rate)) << r.b0 << ' ' << r.b1;
}

TEST(standard_timing, is_eight_pixels_wider_for_each_step) {
    for (int b0 = 0; b0 < 256; ++b0) {
        const int width = (b0 + 31) * 8;
        EXPECT_EQ(standard_text(b0, 0x40),
                  standard_lines(std::to_string(width), std::to_string(width / 4 * 3), "4:3", "60"));
        EXPECT_EQ(standard_text(b0, 0x00),
                  standard_lines(std::to_string(width), std::to_string(width / 8 * 5), "16:10", "60"));
    }
}

TEST(standard_timing, has_a_rate_from_60_to_123) {
    for (int rate = 60; rate <= 123; ++rate)
        EXPECT_EQ(standard_text(0xD1, 0xC0 + rate - 60), standard_lines("1920", "1080", "16:9", std::to_string(rate)));
}

TEST(standard_timing, fails_beyond_the_edid) {
    std::string text;
    EXPECT_EQ(failure_of([&] { decode_standard(text, {}, 254); }), std::nullopt);
    EXPECT_EQ(failure_of([&] { decode_standard(text, {}, 255); }), failure::subscript_out_of_range);
}

} // namespace
} // namespace desk
