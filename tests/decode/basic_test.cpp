#include "translate/decode/basic.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::lines;
using test::text_of;
using test::text_till;
using test::value_after;

std::string basic_text(const std::vector<int>& from_byte_21) {
    return text_of([&](std::string& text) { decode_basic(text, edid_of({{21, from_byte_21}})); });
}
std::string gamma_of(int byte_23) { return value_after("Gamma Value = ", basic_text({0, 0, byte_23})); }

TEST(basic, is_shown_line_by_line) {
    EXPECT_EQ(basic_text({52, 32, 120, 0xEA}), lines({
                                                   "--- Basic Display Parameters ---",
                                                   "Max Horizontal Size(cm) = 52",
                                                   "Max Vertical Size(cm) = 32",
                                                   "Gamma Value = 2.20",
                                                   "",
                                                   "--- Display Features ---",
                                                   "Standby Mode = Supported",
                                                   "Suspend Mode = Supported",
                                                   "Active Off Mode = Supported",
                                                   "Display Type = RGB",
                                                   "Color Space = Alternate",
                                                   "Preferred Timing = 1st Detail",
                                               }) + "GTF Timing = Not Supported");
}

TEST(size, is_shown_unchanged) {
    for (const int centimetres : {0, 1, 100, 255}) {
        const std::string number = " " + std::to_string(centimetres);
        EXPECT_EQ(value_after("Max Horizontal Size(cm) =", basic_text({centimetres, 7})), number);
        EXPECT_EQ(value_after("Max Vertical Size(cm) =", basic_text({7, centimetres})), number);
    }
}

TEST(gamma, has_its_whole_part_rounded_with_ties_to_even) {
    for (int byte_23 = 0; byte_23 <= 155; ++byte_23) {
        const int g = byte_23 + 100;
        const char whole = g < 150 ? '1' : g <= 250 ? '2' : '3';
        EXPECT_EQ(gamma_of(byte_23), std::string{whole} + "." + std::to_string(g % 100)) << byte_23;
    }
}

TEST(gamma, fails_after_its_label_if_it_does_not_fit_a_byte) {
    for (int byte_23 = 156; byte_23 <= 255; ++byte_23) {
        EXPECT_EQ(
            text_till(failure::overflow,
                      [&](std::string& text) {
                          decode_basic(text, edid_of({{21, {52, 32, byte_23}}}));
                      }),
            lines({"--- Basic Display Parameters ---", "Max Horizontal Size(cm) = 52", "Max Vertical Size(cm) = 32"}) +
                "Gamma Value = ")
            << byte_23;
    }
}

TEST(features, have_a_line_for_each_of_their_bits) {
    for (int bits = 0; bits < 256; ++bits) {
        const std::string text = basic_text({0, 0, 0, bits});
        const auto either = [&](int mask, const char* set, const char* clear) {
            return (bits & mask) != 0 ? set : clear;
        };
        EXPECT_EQ(value_after("Standby Mode = ", text), either(0x80, "Supported", "Not Supported")) << bits;
        EXPECT_EQ(value_after("Suspend Mode = ", text), either(0x40, "Supported", "Not Supported")) << bits;
        EXPECT_EQ(value_after("Active Off Mode = ", text), either(0x20, "Supported", "Not Supported")) << bits;
        const char* const types[] = {"Mono/GrayScale", "RGB", "Non-RGB Multicolor", "Undefined"};
        EXPECT_EQ(value_after("Display Type = ", text), types[bits / 8 % 4]) << bits;
        EXPECT_EQ(value_after("Color Space = ", text), either(0x04, "Standard", "Alternate")) << bits;
        EXPECT_EQ(value_after("Preferred Timing = ", text), either(0x02, "1st Detail", "None")) << bits;
        EXPECT_EQ(value_after("GTF Timing = ", text), either(0x01, "Supported", "Not Supported")) << bits;
    }
}

TEST(features, are_the_same_for_an_analog_and_a_digital_input) {
    const auto with_input = [](int byte_20) {
        return text_of([&](std::string& text) { decode_basic(text, edid_of({{20, {byte_20, 1, 2, 3, 0x18}}})); });
    };
    EXPECT_EQ(with_input(0x00), with_input(0x80));
}

} // namespace
} // namespace desk
