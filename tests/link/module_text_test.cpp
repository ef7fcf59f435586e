#include "link/module_text.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::failure_of;

TEST(zero_pad3, fills_up_to_three_characters) {
    EXPECT_EQ(zero_pad3(0), "000");
    EXPECT_EQ(zero_pad3(7), "007");
    EXPECT_EQ(zero_pad3(41), "041");
    EXPECT_EQ(zero_pad3(999), "999");
    EXPECT_EQ(zero_pad3(-1), "0-1");
    EXPECT_EQ(zero_pad3(-99), "-99");
}

TEST(zero_pad3, fails_for_more_than_three_characters) {
    EXPECT_EQ(failure_of([] { zero_pad3(1000); }), failure::invalid_procedure_call);
    EXPECT_EQ(failure_of([] { zero_pad3(-100); }), failure::invalid_procedure_call);
}

TEST(pad_left, puts_the_first_character_of_the_pad_in_front) {
    std::string text = "7";
    EXPECT_EQ(pad_left(text, "0", 3), "007");
    EXPECT_EQ(text, "007") << "the result is also left in the text";
    text = "A";
    EXPECT_EQ(pad_left(text, "xyz", 4), "xxxA");
    text = "";
    EXPECT_EQ(pad_left(text, "0", 2), "00");
}

TEST(pad_left, leaves_a_text_of_just_that_width) {
    std::string text = "255";
    EXPECT_EQ(pad_left(text, "0", 3), "255");
}

TEST(pad_left, keeps_the_rightmost_characters_of_a_longer_text) {
    std::string text = "0255";
    EXPECT_EQ(pad_left(text, "0", 3), "255");
    EXPECT_EQ(text, "255");
}

TEST(pad_left, trims_first) {
    std::string text = "  12  ";
    EXPECT_EQ(pad_left(text, "0", 4), "0012");
    EXPECT_EQ(text, "0012");
}

TEST(pad_left, fails_without_a_pad_and_for_a_negative_width) {
    std::string text = "7";
    EXPECT_EQ(failure_of([&] { pad_left(text, "", 3); }), failure::invalid_procedure_call);
    EXPECT_EQ(failure_of([&] { pad_left(text, "0", -1); }), failure::invalid_procedure_call);
    EXPECT_EQ(text, "7");
}

TEST(path_part_0, is_all_before_the_last_backslash) {
    EXPECT_EQ(path_part("C:\\edid\\sink.hex", 0), "C:\\edid");
    EXPECT_EQ(path_part("C:\\sink.hex", 0), "C:");
    EXPECT_EQ(path_part("C:\\edid\\", 0), "C:\\edid");
}

TEST(path_part_1, is_short_for_display) {
    EXPECT_EQ(path_part("C:\\edid\\long\\sink.hex", 1), "C:\\...\\sink.hex");
    EXPECT_EQ(path_part("\\\\server\\share\\x.hex", 1), "\\\\s...\\x.hex");
}

TEST(path_part_1, is_the_path_where_the_backslash_is_the_third_character) {
    EXPECT_EQ(path_part("C:\\sink.hex", 1), "C:\\sink.hex");
    EXPECT_EQ(path_part("C:\\", 1), "C:\\");
}

TEST(path_part_1, is_longer_than_the_path_where_that_is_short) {
    EXPECT_EQ(path_part("a\\b", 1), "a\\b...\\b") << "the first three characters, whatever they are";
}

TEST(path_part_2, is_all_behind_the_last_backslash) {
    EXPECT_EQ(path_part("C:\\edid\\sink.hex", 2), "sink.hex");
    EXPECT_EQ(path_part("C:\\edid\\", 2), "");
}

TEST(path_part, takes_a_slash_as_well) {
    EXPECT_EQ(path_part("/home/op/sink.hex", 0), "/home/op");
    EXPECT_EQ(path_part("/home/op/sink.hex", 1), "/ho.../sink.hex");
    EXPECT_EQ(path_part("/home/op/sink.hex", 2), "sink.hex");
    EXPECT_EQ(path_part("C:\\edid/sink.hex", 2), "sink.hex");
    EXPECT_EQ(path_part("C:/edid\\sink.hex", 2), "sink.hex");
}

TEST(path_part, counts_characters_and_not_bytes) {
    EXPECT_EQ(path_part("äö\\x", 1), "äö\\x") << "the backslash is the third character";
    EXPECT_EQ(path_part("äöü\\deep\\x", 1), "äöü...\\x");
}

TEST(path_part, of_a_path_without_any_is_the_whole_path_but_for_part_0) {
    EXPECT_EQ(path_part("sink.hex", 0), "");
    EXPECT_EQ(path_part("sink.hex", 1), "sink.hex");
    EXPECT_EQ(path_part("sink.hex", 2), "sink.hex");
}

TEST(path_part, of_an_empty_path_is_empty) {
    for (const int part : {0, 1, 2})
        EXPECT_EQ(path_part("", part), "");
}

TEST(trim_tabs, takes_blanks_and_tabs_from_both_ends) {
    std::string text = "  \t \t x\ty \t ";
    EXPECT_EQ(trim_tabs(text), "x\ty");
    EXPECT_EQ(text, "x\ty") << "the result is also left in the text";
    text = "plain";
    EXPECT_EQ(trim_tabs(text), "plain");
}

TEST(trim_tabs, may_leave_nothing) {
    for (std::string text : {"", "   ", "\t", " \t \t "})
        EXPECT_EQ(trim_tabs(text), "");
}

TEST(trim_tabs, leaves_other_white_space) {
    std::string text = "\r\nx\r\n";
    EXPECT_EQ(trim_tabs(text), "\r\nx\r\n");
}

} // namespace
} // namespace desk
