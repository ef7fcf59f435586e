#include "runtime/text.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

namespace desk {
namespace {

using test::failure_of;

TEST(str, has_a_leading_space_unless_negative) {
    EXPECT_EQ(str(3), " 3");
    EXPECT_EQ(str(0), " 0");
    EXPECT_EQ(str(-3), "-3");
    EXPECT_EQ(str(3.0), " 3");
    EXPECT_EQ(str(-12.25), "-12.25");
    EXPECT_EQ(str(0.0), " 0");
}

TEST(str, drops_the_zero_before_the_point_and_trailing_zeros) {
    for (const auto& [given, expected] : std::initializer_list<std::pair<double, const char*>>{{0.64, " .64"},
                                                                                               {0.5, " .5"},
                                                                                               {-0.5, "-.5"},
                                                                                               {0.05, " .05"},
                                                                                               {1.50, " 1.5"},
                                                                                               {100.0, " 100"},
                                                                                               {10.05, " 10.05"}})
        EXPECT_EQ(str(given), expected) << given;
}

TEST(str, has_up_to_15_digits_of_a_double) {
    EXPECT_EQ(str(1.0 / 3), " .333333333333333");
    EXPECT_EQ(str(2.0 / 3), " .666666666666667");
    EXPECT_EQ(str(123456789012345.0), " 123456789012345");
    EXPECT_EQ(str(4294967295.0), " 4294967295");
    EXPECT_EQ(str(0.1 + 0.2), " .3");
}

TEST(str, has_up_to_7_digits_of_a_single) {
    EXPECT_EQ(str(0.1F), " .1");
    EXPECT_EQ(str(1.0F / 3), " .3333333");
    EXPECT_EQ(str(74.17582F), " 74.17582");
    EXPECT_EQ(str(1234567.0F), " 1234567");
    EXPECT_EQ(str(12500000.0F), " 1.25E+07") << "two digits of the exponent at least";
}

TEST(number_text, keeps_the_zero_before_the_point_and_has_no_leading_space) {
    EXPECT_EQ(number_text(0.5), "0.5");
    EXPECT_EQ(number_text(-0.5), "-0.5");
    EXPECT_EQ(number_text(12), "12");
    EXPECT_EQ(number_text(25.175F), "25.175");
    EXPECT_EQ(number_text(148.3516F), "148.3516");
    EXPECT_EQ(number_text(0.0), "0");
}

TEST(hex, is_in_upper_case_without_padding) {
    EXPECT_EQ(hex(0), "0");
    EXPECT_EQ(hex(10), "A");
    EXPECT_EQ(hex(255), "FF");
    EXPECT_EQ(hex(256), "100");
    EXPECT_EQ(hex(0xDEADBEEF), "DEADBEEF");
}

TEST(hex2, has_two_digits) {
    EXPECT_EQ(hex2(0), "00");
    EXPECT_EQ(hex2(0x0A), "0A");
    EXPECT_EQ(hex2(0x10), "10");
    EXPECT_EQ(hex2(0xFF), "FF");
}

TEST(append_listed_byte, appends_two_digits_and_a_space) {
    std::string text = "before ";
    append_listed_byte(text, 0x0A, 0);
    append_listed_byte(text, 0xFF, 1);
    append_listed_byte(text, 0x00, 6);
    EXPECT_EQ(text, "before 0A FF 00 ");
}

TEST(append_listed_byte, ends_a_line_after_each_eighth_with_its_index) {
    std::string text;
    for (const std::size_t index : {7U, 8U, 15U, 23U, 127U, 128U, 135U, 255U, 263U})
        append_listed_byte(text, 0x12, index);
    EXPECT_EQ(text, "12 //7\r\n12 12 //F\r\n12 //17\r\n12 //7F\r\n12 12 //87\r\n12 //FF\r\n12 //107\r\n");
}

TEST(append_listed_byte, makes_a_line_of_eight) {
    std::string text;
    for (std::size_t index = 0; index < 16; ++index)
        append_listed_byte(text, static_cast<std::uint8_t>(index * 16), index);
    EXPECT_EQ(text, "00 10 20 30 40 50 60 70 //7\r\n80 90 A0 B0 C0 D0 E0 F0 //F\r\n");
}

TEST(val, is_the_longest_numeric_prefix) {
    for (const auto& [given, expected] : std::initializer_list<std::pair<const char*, double>>{{"12", 12},
                                                                                               {"12abc", 12},
                                                                                               {"-3.5x", -3.5},
                                                                                               {"+4", 4},
                                                                                               {".5", 0.5},
                                                                                               {"5.", 5},
                                                                                               {"1.2.3", 1.2},
                                                                                               {"007", 7},
                                                                                               {"1 2", 1},
                                                                                               {"25,5", 25}})
        EXPECT_EQ(val(given), expected) << given;
}

TEST(val, skips_leading_spaces_and_tabs) {
    EXPECT_EQ(val("  7"), 7);
    EXPECT_EQ(val("\t7"), 7);
    EXPECT_EQ(val(" \t -7"), -7);
}

TEST(val, accepts_an_exponent_with_e) {
    EXPECT_EQ(val("1E3"), 1000);
    EXPECT_EQ(val("1.5E+2"), 150);
    EXPECT_EQ(val("25E-2"), 0.25);
    EXPECT_EQ(val("1E"), 1) << "an exponent without digits is none";
    EXPECT_EQ(val("1E+"), 1);
    EXPECT_EQ(val("1E2E3"), 100);
}

TEST(val, is_0_without_a_number) {
    for (const char* text : {"", "abc", "-", "+", ".", "E5", "x1", "   ", "-x", "--1"})
        EXPECT_EQ(val(text), 0) << '"' << text << '"';
}

TEST(val, fails_for_too_large_but_not_for_too_small_numbers) {
    EXPECT_EQ(failure_of([] { val("1E400"); }), failure::overflow);
    EXPECT_EQ(failure_of([] { val("-1E400"); }), failure::overflow);
    EXPECT_EQ(failure_of([] { val("1" + std::string(400, '0')); }), failure::overflow);
    EXPECT_EQ(val("1E-400"), 0);
    EXPECT_EQ(val("0." + std::string(400, '0') + "1E+5"), 0);
    EXPECT_EQ(val("1" + std::string(400, '0') + "E-800"), 0);
    EXPECT_EQ(val("1E-99999999999999999999"), 0);
    EXPECT_EQ(failure_of([] { val("1" + std::string(400, '0') + "E-1"); }), failure::overflow);
    EXPECT_EQ(failure_of([] { val("0.001E+400"); }), failure::overflow);
    EXPECT_EQ(failure_of([] { val("1E99999999999999999999"); }), failure::overflow);
    EXPECT_EQ(val("0." + std::string(400, '0') + "1"), 0);
}

TEST(is_number, needs_the_whole_text) {
    for (const char* text : {"1", "-1", "+1", "1.5", ".5", "5.", "1E3", "1E-3"})
        EXPECT_TRUE(is_number(text)) << text;
    for (const char* text : {"", " 1", "1 ", "1x", "x", "1.2.3", "1E", ".", "-"})
        EXPECT_FALSE(is_number(text)) << '"' << text << '"';
}

TEST(format_patterns, print_three_decimals) {
    EXPECT_EQ(format_zero(20), "20.000");
    EXPECT_EQ(format_hash(50), "50.000");
    EXPECT_EQ(format_zero(1234.5), "1234.500");
    EXPECT_EQ(format_hash(1234.5), "1234.500");
    EXPECT_EQ(format_zero(-1.25), "-1.250");
    EXPECT_EQ(format_hash(1), "1.000");
}

TEST(format_patterns, differ_in_the_zero_before_the_point) {
    for (const auto& [number, rest] :
         std::initializer_list<std::pair<double, std::string>>{{0.5, ".500"}, {0, ".000"}, {0.001, ".001"}}) {
        EXPECT_EQ(format_hash(number), rest);
        EXPECT_EQ(format_zero(number), "0" + rest);
    }
    EXPECT_EQ(format_hash(-0.5), "-.500");
    EXPECT_EQ(format_zero(-0.5), "-0.500");
    EXPECT_EQ(format_zero(-0.0001), "0.000") << "a zero has no sign";
}

TEST(format_patterns, round_half_away_from_zero_on_the_decimal_digits) {
    EXPECT_EQ(format_zero(0.0625), "0.063");
    EXPECT_EQ(format_zero(-0.0625), "-0.063");
    EXPECT_EQ(format_zero(0.0005), "0.001");
    EXPECT_EQ(format_hash(0.0005), ".001");
    EXPECT_EQ(format_zero(0.00049), "0.000");
    EXPECT_EQ(format_zero(1.0005), "1.001") << "the binary number is slightly smaller";
    EXPECT_EQ(format_zero(2.6745), "2.675");
    EXPECT_EQ(format_zero(0.12349), "0.123");
    EXPECT_EQ(format_hash(0.12351), ".124");
}

TEST(format_patterns, carry_when_rounding) {
    EXPECT_EQ(format_hash(0.9995), "1.000");
    EXPECT_EQ(format_zero(9.9995), "10.000");
    EXPECT_EQ(format_zero(999.9996), "1000.000");
    EXPECT_EQ(format_zero(0.0996), "0.100");
    EXPECT_EQ(format_zero(0.9994), "0.999");
}

TEST(trim, removes_only_spaces) {
    for (const auto& [given, expected] : std::initializer_list<std::pair<const char*, const char*>>{
             {"  a b  ", "a b"}, {"a", "a"}, {"   ", ""}, {"", ""}, {" \ta\t ", "\ta\t"}, {" a\r\n", "a\r\n"}})
        EXPECT_EQ(trim(given), expected) << given;
}

TEST(letters, change_case_only_in_ascii) {
    EXPECT_EQ(lower_case("AbC9_[Z"), "abc9_[z");
    EXPECT_EQ(upper_case("aBc9_{z"), "ABC9_{Z");
    EXPECT_EQ(upper_case("\xC3\xA4"), "\xC3\xA4");
    EXPECT_EQ(lower_case("\xC3\x84"), "\xC3\x84");
}

TEST(hex_digit, accepts_only_digits_in_either_case) {
    const std::string upper = "0123456789ABCDEF";
    const std::string lower = "0123456789abcdef";
    for (int code = 0; code < 256; ++code) {
        const auto c = static_cast<char>(code);
        const std::size_t place = std::min(upper.find(c), lower.find(c));
        EXPECT_EQ(hex_digit(c), place == std::string::npos ? -1 : static_cast<int>(place)) << code;
    }
}

TEST(is_digit, knows_0_to_9) {
    for (int code = 0; code < 256; ++code)
        EXPECT_EQ(is_digit(static_cast<char>(code)), code >= '0' && code <= '9') << code;
}

} // namespace
} // namespace desk
