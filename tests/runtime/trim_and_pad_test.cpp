#include "runtime/trim_and_pad.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

namespace desk {
namespace {

using test::failure_of;

TEST(zero_pad3, fills_up_to_three_characters) {
    for (const auto& [given, expected] : std::initializer_list<std::pair<int, const char*>>{
             {0, "000"}, {7, "007"}, {41, "041"}, {999, "999"}, {-1, "0-1"}, {-99, "-99"}})
        EXPECT_EQ(zero_pad3(given), expected) << given;
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

TEST(trim_tabs, removes_spaces_and_tabs_from_both_ends) {
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
