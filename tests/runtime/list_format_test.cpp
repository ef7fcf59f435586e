#include "runtime/list_format.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace desk {
namespace {

using test::failure_of;

TEST(list_reader_string, in_quotes_keeps_its_comma_and_loses_its_quotes) {
    list_reader values("\"one, two\",\"three\"\r\n");
    EXPECT_EQ(values.read_string(), "one, two");
    EXPECT_EQ(values.read_string(), "three");
}

TEST(list_reader_string, in_quotes_keeps_its_spaces) {
    list_reader values("\"  two before, two after  \",x");
    EXPECT_EQ(values.read_string(), "  two before, two after  ");
    EXPECT_EQ(values.read_string(), "x");
}

TEST(list_reader_string, in_quotes_can_contain_a_line_end) {
    list_reader values("\"a\r\nb\",c");
    EXPECT_EQ(values.read_string(), "a\r\nb");
    EXPECT_EQ(values.read_string(), "c");
}

TEST(list_reader_string, without_quotes_loses_only_its_leading_spaces) {
    list_reader values("   plain name , next");
    EXPECT_EQ(values.read_string(), "plain name ");
    EXPECT_EQ(values.read_string(), "next");
}

TEST(list_reader_string, without_quotes_keeps_a_quote_inside) {
    list_reader values("15\" monitor,x");
    EXPECT_EQ(values.read_string(), "15\" monitor");
    EXPECT_EQ(values.read_string(), "x");
}

TEST(list_reader_string, can_be_empty) {
    list_reader values("\"\",,\r\nlast");
    EXPECT_EQ(values.read_string(), "");
    EXPECT_EQ(values.read_string(), "");
    EXPECT_EQ(values.read_string(), "");
    EXPECT_EQ(values.read_string(), "last");
}

TEST(list_reader_string, fails_after_the_last_value) {
    list_reader values("one\r\n");
    EXPECT_EQ(values.read_string(), "one");
    EXPECT_EQ(failure_of([&] { values.read_string(); }), failure::input_past_end_of_file);
}

TEST(list_reader, takes_every_kind_of_line_end_as_one_separator) {
    list_reader values("1\r\n2\n3\r4,5");
    for (const int expected : {1, 2, 3, 4, 5})
        EXPECT_EQ(values.read_integer(), expected);
}

TEST(list_reader, counts_values_and_not_lines) {
    list_reader values("7,\"a\"\r\n8\r\n\"b\",9");
    EXPECT_EQ(values.read_integer(), 7);
    EXPECT_EQ(values.read_string(), "a");
    EXPECT_EQ(values.read_integer(), 8);
    EXPECT_EQ(values.read_string(), "b");
    EXPECT_EQ(values.read_integer(), 9);
}

TEST(list_reader_number, ends_at_a_space_or_tab) {
    list_reader values("12 34\t,56");
    EXPECT_EQ(values.read_integer(), 12);
    EXPECT_EQ(values.read_integer(), 34);
    EXPECT_EQ(values.read_integer(), 56);
}

TEST(list_reader_number, takes_the_spaces_and_one_separator_after_it) {
    list_reader values("5  \r\n,name");
    EXPECT_EQ(values.read_integer(), 5);
    EXPECT_EQ(values.read_string(), "") << "the second separator belongs to an empty value";
    EXPECT_EQ(values.read_string(), "name");
}

TEST(list_reader_number, skips_leading_spaces) {
    list_reader values("   42\r\n  -7");
    EXPECT_EQ(values.read_integer(), 42);
    EXPECT_EQ(values.read_integer(), -7);
}

TEST(list_reader_number, fails_if_it_is_not_a_number) {
    for (const char* text : {"abc", "12x", "\"5\"", "1.2.3", "-"}) {
        list_reader values(text);
        EXPECT_EQ(failure_of([&] { values.read_integer(); }), failure::type_mismatch) << text;
    }
}

TEST(list_reader_number, fails_after_the_last_value) {
    list_reader values("");
    EXPECT_EQ(failure_of([&] { values.read_integer(); }), failure::input_past_end_of_file);
    EXPECT_EQ(failure_of([&] { values.read_byte(); }), failure::input_past_end_of_file);
    EXPECT_EQ(failure_of([&] { values.read_single(); }), failure::input_past_end_of_file);
}

TEST(list_reader, finds_no_value_in_trailing_spaces) {
    list_reader numbers("1   ");
    EXPECT_EQ(numbers.read_integer(), 1);
    EXPECT_EQ(failure_of([&] { numbers.read_integer(); }), failure::input_past_end_of_file);
    list_reader texts("a\r\n   ");
    EXPECT_EQ(texts.read_string(), "a");
    EXPECT_EQ(failure_of([&] { texts.read_string(); }), failure::input_past_end_of_file);
}

TEST(list_reader_integer, is_of_16_bits) {
    list_reader values("32767,-32768,32768,-32769,1E9");
    EXPECT_EQ(values.read_integer(), 32767);
    EXPECT_EQ(values.read_integer(), -32768);
    EXPECT_EQ(failure_of([&] { values.read_integer(); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { values.read_integer(); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { values.read_integer(); }), failure::overflow);
}

TEST(list_reader_integer, is_rounded_to_the_even_neighbour) {
    list_reader values("0.5,1.5,2.5,2.51");
    EXPECT_EQ(values.read_integer(), 0);
    EXPECT_EQ(values.read_integer(), 2);
    EXPECT_EQ(values.read_integer(), 2);
    EXPECT_EQ(values.read_integer(), 3);
}

TEST(list_reader_byte, holds_0_to_255) {
    list_reader values("0\r\n255\r\n256\r\n-1\r\n");
    EXPECT_EQ(values.read_byte(), 0);
    EXPECT_EQ(values.read_byte(), 255);
    EXPECT_EQ(failure_of([&] { values.read_byte(); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { values.read_byte(); }), failure::overflow);
}

TEST(list_reader_single, is_a_32_bit_number_with_a_point) {
    list_reader values("25.175,.5,100.,-2,1E2,0");
    EXPECT_EQ(values.read_single(), 25.175F);
    EXPECT_EQ(values.read_single(), 0.5F);
    EXPECT_EQ(values.read_single(), 100.0F);
    EXPECT_EQ(values.read_single(), -2.0F);
    EXPECT_EQ(values.read_single(), 100.0F);
    EXPECT_EQ(values.read_single(), 0.0F);
}

TEST(list_reader_single, fails_if_the_number_is_too_large) {
    list_reader values("3.4E38,3.5E38,-1E39,1E400");
    EXPECT_EQ(values.read_single(), 3.4E38F);
    EXPECT_EQ(failure_of([&] { values.read_single(); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { values.read_single(); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { values.read_single(); }), failure::overflow);
}

TEST(list_reader, skips_a_byte_order_mark_only_at_the_beginning) {
    list_reader number("\xEF\xBB\xBF"
                       "79\r\n");
    EXPECT_EQ(number.read_integer(), 79);
    list_reader text("\xEF\xBB\xBF\"a\",\xEF\xBB\xBF"
                     "b");
    EXPECT_EQ(text.read_string(), "a");
    EXPECT_EQ(text.read_string(), "\xEF\xBB\xBF"
                                  "b");
    list_reader nothing("\xEF\xBB\xBF");
    EXPECT_EQ(failure_of([&] { nothing.read_integer(); }), failure::input_past_end_of_file);
}

TEST(list_record, quotes_a_string_but_not_a_number) {
    EXPECT_EQ(list_record("C:\\edid\\one, two.hex"), "\"C:\\edid\\one, two.hex\"\r\n");
    EXPECT_EQ(list_record(""), "\"\"\r\n");
    EXPECT_EQ(list_record(8), "8\r\n");
    EXPECT_EQ(list_record(0), "0\r\n");
    EXPECT_EQ(list_record(-1), "-1\r\n");
}

TEST(list_record, does_not_quote_a_string_with_a_quote) {
    EXPECT_EQ(list_record("/edid/24\" panel.hex"), "/edid/24\" panel.hex\r\n");
}

TEST(list_record, is_read_back_unchanged_or_does_not_exist) {
    const std::string pieces[] = {"a", "\"", ",", " ", "\t", "\r", "\n", "\r\n", "\x1B", "\x7F", "\xC3\xA4", "/"};
    int held = 0;
    for (const std::string& first : pieces) {
        for (const std::string& second : pieces) {
            for (const std::string& third : pieces) {
                const std::string name = first + second + third;
                const auto record = list_record(name);
                if (!record) continue;
                ++held;
                const std::string text = *record + list_record(5);
                list_reader values(text);
                EXPECT_EQ(values.read_string(), name);
                EXPECT_EQ(values.read_integer(), 5);
            }
        }
    }
    EXPECT_GT(held, 11 * 11 * 11) << "all without a quote";
}

TEST(list_record, does_not_exist_if_neither_form_can_hold_the_string) {
    for (const char* text : {"\"", "\"a", " a\"", "\ta\"", "a\",b", "a\"\r\nb", "a\"\n", "\ra\""})
        EXPECT_EQ(list_record(text), std::nullopt) << text;
}

} // namespace
} // namespace desk
