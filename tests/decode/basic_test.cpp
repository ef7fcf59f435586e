#include "translate/decode/basic.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::behind;
using test::edid_of;
using test::lines;
using test::text_of;
using test::text_till;

std::string basic_text(const std::vector<int>& from_byte_21) {
    return text_of([&](std::string& text) { decode_basic(text, edid_of({{21, from_byte_21}})); });
}
std::string gamma_of(int byte_23) { return behind("Gamma Value = ", basic_text({0, 0, byte_23})); }

TEST(basic, is_told_line_by_line) {
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

TEST(basic, stands_behind_what_was_there) {
    test::expect_appends([](std::string& text) { decode_basic(text, {}); });
    test::expect_appends([](std::string& text) { decode_basic(text, edid_of({{23, {255}}})); });
}

TEST(size, is_told_as_it_stands) {
    for (const int centimetres : {0, 1, 100, 255}) {
        const std::string number = " " + std::to_string(centimetres);
        EXPECT_EQ(behind("Max Horizontal Size(cm) =", basic_text({centimetres, 7})), number);
        EXPECT_EQ(behind("Max Vertical Size(cm) =", basic_text({7, centimetres})), number);
    }
}

TEST(gamma, is_a_rounded_whole_part_and_the_rest_without_zeros_in_front) {
    const std::vector<std::pair<int, std::string>> told = {
        {0, "1.0"},    {5, "1.5"},    {20, "1.20"},  {49, "1.49"},  {50, "2.50"},  {51, "2.51"},
        {70, "2.70"},  {99, "2.99"},  {100, "2.0"},  {105, "2.5"},  {120, "2.20"}, {149, "2.49"},
        {150, "2.50"}, {151, "3.51"}, {154, "3.54"}, {155, "3.55"},
    };
    for (const auto& [byte_23, value] : told)
        EXPECT_EQ(gamma_of(byte_23), value) << byte_23;
}

TEST(gamma, has_its_whole_part_rounded_with_ties_to_even) {
    for (int byte_23 = 0; byte_23 <= 155; ++byte_23) {
        const int g = byte_23 + 100;
        const char whole = g < 150 ? '1' : g <= 250 ? '2' : '3';
        EXPECT_EQ(gamma_of(byte_23), std::string{whole} + "." + std::to_string(g % 100)) << byte_23;
    }
}

TEST(gamma, fails_behind_its_label_where_it_does_not_fit_a_byte) {
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
    struct row {
        int byte_24;
        const char* standby;
        const char* suspend;
        const char* active_off;
        const char* type;
        const char* color_space;
        const char* preferred;
        const char* gtf;
    };
    const row rows[] = {
        {0x00, "Not Supported", "Not Supported", "Not Supported", "Mono/GrayScale", "Alternate", "None",
         "Not Supported"},
        {0x80, "Supported", "Not Supported", "Not Supported", "Mono/GrayScale", "Alternate", "None", "Not Supported"},
        {0x40, "Not Supported", "Supported", "Not Supported", "Mono/GrayScale", "Alternate", "None", "Not Supported"},
        {0x20, "Not Supported", "Not Supported", "Supported", "Mono/GrayScale", "Alternate", "None", "Not Supported"},
        {0x08, "Not Supported", "Not Supported", "Not Supported", "RGB", "Alternate", "None", "Not Supported"},
        {0x10, "Not Supported", "Not Supported", "Not Supported", "Non-RGB Multicolor", "Alternate", "None",
         "Not Supported"},
        {0x18, "Not Supported", "Not Supported", "Not Supported", "Undefined", "Alternate", "None", "Not Supported"},
        {0x04, "Not Supported", "Not Supported", "Not Supported", "Mono/GrayScale", "Standard", "None",
         "Not Supported"},
        {0x02, "Not Supported", "Not Supported", "Not Supported", "Mono/GrayScale", "Alternate", "1st Detail",
         "Not Supported"},
        {0x01, "Not Supported", "Not Supported", "Not Supported", "Mono/GrayScale", "Alternate", "None", "Supported"},
        {0xFF, "Supported", "Supported", "Supported", "Undefined", "Standard", "1st Detail", "Supported"},
    };
    for (const row& r : rows) {
        const std::string text = basic_text({0, 0, 0, r.byte_24});
        EXPECT_EQ(behind("Standby Mode = ", text), r.standby) << r.byte_24;
        EXPECT_EQ(behind("Suspend Mode = ", text), r.suspend) << r.byte_24;
        EXPECT_EQ(behind("Active Off Mode = ", text), r.active_off) << r.byte_24;
        EXPECT_EQ(behind("Display Type = ", text), r.type) << r.byte_24;
        EXPECT_EQ(behind("Color Space = ", text), r.color_space) << r.byte_24;
        EXPECT_EQ(behind("Preferred Timing = ", text), r.preferred) << r.byte_24;
        EXPECT_EQ(behind("GTF Timing = ", text), r.gtf) << r.byte_24;
    }
}

TEST(features, are_told_alike_for_an_analog_and_a_digital_input) {
    const auto with_input = [](int byte_20) {
        return text_of([&](std::string& text) { decode_basic(text, edid_of({{20, {byte_20, 1, 2, 3, 0x18}}})); });
    };
    EXPECT_EQ(with_input(0x00), with_input(0x80));
}

} // namespace
} // namespace desk
