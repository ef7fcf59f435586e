#include "robot/tokens.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk::robot {
namespace {

std::vector<std::string> texts_of(std::string_view line) {
    const std::vector<token> tokens = tokens_of(line).value();
    std::vector<std::string> texts;
    for (const token& w : tokens)
        texts.push_back((w.quoted ? "quoted " : "") + w.text);
    return texts;
}

using texts = std::vector<std::string>;

TEST(tokens, are_separated_by_spaces) {
    EXPECT_EQ(texts_of("click cmd_about"), (texts{"click", "cmd_about"}));
    EXPECT_EQ(texts_of("  select   lstv_timing  7  "), (texts{"select", "lstv_timing", "7"}));
    EXPECT_EQ(texts_of(""), texts{});
    EXPECT_EQ(texts_of("click cmd_out(2)\r"), (texts{"click", "cmd_out(2)"}));
}

TEST(tokens, in_quotes_are_json_strings) {
    EXPECT_EQ(texts_of("type box \"two words\""), (texts{"type", "box", "quoted two words"}));
    EXPECT_EQ(texts_of("\"\""), texts{"quoted "});
    EXPECT_EQ(texts_of("x \"a\\\"b\\\\c\\r\\n\\u00e4\""), (texts{"x", "quoted a\"b\\c\r\nä"}));
    EXPECT_EQ(texts_of("reply \"TIM*\" echo"), (texts{"reply", "quoted TIM*", "echo"}));
    EXPECT_EQ(texts_of("x \"ä€\""), (texts{"x", "quoted ä€"}));
}

TEST(tokens, know_their_positions) {
    const auto tokens = tokens_of("after 5  click \"x y\" z").value();
    ASSERT_EQ(tokens.size(), 5U);
    EXPECT_EQ(tokens[2].at, 9U);
    EXPECT_EQ(tokens[3].at, 15U);
    EXPECT_EQ(tokens[4].at, 21U);
}

TEST(tokens, are_none_if_a_quoted_one_is_no_json_string) {
    for (const char* line : {"x \"open", "x \"bad \\q\"", "x \"\\u12\"", "x \"\x01\"", "\"", "x \"a\\\""})
        EXPECT_FALSE(tokens_of(line).has_value()) << line;
}

TEST(number_of, takes_whole_numbers_without_quotes) {
    const auto number = [](const std::string& text, bool quoted = false) { return number_of({text, quoted, 0}); };
    EXPECT_EQ(number("7"), 7);
    EXPECT_EQ(number("-1"), -1);
    EXPECT_EQ(number("007"), 7);
    EXPECT_EQ(number("7", true), std::nullopt);
    for (const char* text : {"", "7x", "x", "1.5", "99999999999", " 7"})
        EXPECT_EQ(number(text), std::nullopt) << text;
}

TEST(bytes_of_hex, takes_pairs_of_digits) {
    EXPECT_EQ(bytes_of_hex("00FF0a"), std::string("\0\xFF\x0A", 3));
    EXPECT_EQ(bytes_of_hex(""), "");
    for (const char* digits : {"0", "0G", "G0", "0x", "-1", " 1", "+1"})
        EXPECT_EQ(bytes_of_hex(digits), std::nullopt) << digits;
}

TEST(hex_of_bytes, is_in_upper_case) { EXPECT_EQ(hex_of_bytes(std::string("\0\xFF\x0A", 3)), "00FF0A"); }

} // namespace
} // namespace desk::robot
