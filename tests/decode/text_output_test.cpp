#include "translate/decode/text_output.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

class pieces : public testing::Test {
protected:
    std::string text = "before ";
};

TEST_F(pieces, follow_one_another) {
    print(text, "a", std::string("b"), std::string_view("c"));
    EXPECT_EQ(text, "before abc");
    print(text);
    EXPECT_EQ(text, "before abc");
}

TEST_F(pieces, can_be_a_line) {
    print_line(text, "a", std::string("b"));
    EXPECT_EQ(text, "before ab\r\n");
    print_line(text);
    EXPECT_EQ(text, "before ab\r\n\r\n");
}

TEST_F(pieces, can_be_empty_lines) {
    print_line_ends(text, 3);
    EXPECT_EQ(text, "before \r\n\r\n\r\n");
    print_line_ends(text, 0);
    EXPECT_EQ(text, "before \r\n\r\n\r\n");
}

TEST_F(pieces, can_be_a_character_of_the_desks_set) {
    for (const std::uint32_t code : {0x41U, 0x80U, 0x81U, 0xFFU})
        print_character(text, code);
    EXPECT_EQ(text, "before A\xE2\x82\xAC\xC2\x81\xC3\xBF");
}

TEST_F(pieces, can_be_a_character_beyond_the_set) {
    print_character(text, 256);
    print_character(text, 303);
    EXPECT_EQ(text, "before \xC4\x80\xC4\xAF");
}

TEST_F(pieces, can_be_the_character_0) {
    print_character(text, 0);
    EXPECT_EQ(text, std::string("before \0", 8));
}

TEST_F(pieces, can_be_a_digit_and_the_characters_after_the_digits) {
    for (const std::uint32_t value : {0U, 9U, 10U, 17U, 80U, 207U, 208U})
        print_digit(text, value);
    EXPECT_EQ(text, "before 09:A\xE2\x82\xAC\xC3\xBF\xC4\x80");
}

TEST(supported, has_two_words) {
    EXPECT_EQ(supported(true), "Supported");
    EXPECT_EQ(supported(false), "Not Supported");
}

TEST(bit, is_counted_from_the_lowest) {
    for (int number = 0; number < 8; ++number) {
        for (int other = 0; other < 8; ++other)
            EXPECT_EQ(bit(static_cast<std::uint8_t>(1 << other), number), other == number);
    }
}

} // namespace
} // namespace desk
