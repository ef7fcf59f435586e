#include "translate/decode/color.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::text_of;

/// Where a coordinate is stored: the byte of its upper eight bits; the byte and the shift of its lower two.
struct coordinate {
    std::string label;
    std::size_t high_byte;
    std::size_t low_byte;
    int shift;
};

const coordinate coordinates[] = {
    {"Red x = 0", 27, 25, 6},  {"Red y = 0", 28, 25, 4},  {"Green x = 0", 29, 25, 2}, {"Green y = 0", 30, 25, 0},
    {"Blue x = 0", 31, 26, 6}, {"Blue y = 0", 32, 26, 4}, {"White x = 0", 33, 26, 2}, {"White y = 0", 34, 26, 0},
};

std::string color_text(const edid_buffer& edid) {
    return text_of([&](std::string& text) { decode_color(text, edid); });
}
/// All eight lines, one with this value and the others 0.
std::string lines_with(const coordinate& other, const std::string& value) {
    std::string text;
    for (const coordinate& c : coordinates)
        text += c.label + (c.label == other.label ? value : "0") + "\r\n";
    return text;
}
edid_buffer with_value(const coordinate& c, int ten_bits) {
    return edid_of({{c.high_byte, {ten_bits >> 2}}, {c.low_byte, {(ten_bits & 3) << c.shift}}});
}

TEST(color, reads_each_coordinate_from_its_place) {
    for (const coordinate& c : coordinates) {
        EXPECT_EQ(color_text(with_value(c, 0x200)), lines_with(c, ".5"));
        EXPECT_EQ(color_text(with_value(c, 4)), lines_with(c, ".004")) << "the lowest bit of the upper byte";
        EXPECT_EQ(color_text(with_value(c, 2)), lines_with(c, ".002")) << "the higher of the lower two bits";
    }
}

TEST(color, ignores_the_lowest_bit) {
    for (const coordinate& c : coordinates) {
        EXPECT_EQ(color_text(with_value(c, 1)), color_text({}));
        EXPECT_EQ(color_text(with_value(c, 0x291)), color_text(with_value(c, 0x290)));
    }
}

TEST(color, has_up_to_three_decimals_without_trailing_zeros) {
    const std::vector<std::pair<int, std::string>> expected = {
        {656, ".641"},                                                // 0.640625
        {640, ".625"},  {512, ".5"},    {256, ".25"},   {64, ".063"}, // 0.0625, a half
        {192, ".188"},                                                // 0.1875, a half
        {1023, ".998"}, {1022, ".998"}, {1020, ".996"}, {16, ".016"}, {320, ".313"},
    };
    for (const auto& [ten_bits, value] : expected)
        EXPECT_EQ(color_text(with_value(coordinates[0], ten_bits)), lines_with(coordinates[0], value)) << ten_bits;
}

TEST(cal_chroma, is_the_fraction_of_the_upper_nine_bits) {
    for (int ten_bits = 0; ten_bits < 1024; ++ten_bits) {
        auto value = static_cast<float>(ten_bits);
        EXPECT_EQ(cal_chroma(value), static_cast<float>(ten_bits / 2) / 512) << ten_bits;
    }
}

TEST(cal_chroma, scales_its_argument) {
    float value = 3;
    cal_chroma(value);
    EXPECT_EQ(value, 3 * 32 * 512);
}

} // namespace
} // namespace desk
