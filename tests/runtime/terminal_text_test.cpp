#include "runtime/terminal_text.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

TEST(terminal_text, passes_text_with_line_ends_and_tabs) {
    const std::string text = "one\r\ntwo\n\tthree \xC3\xA4 \xE2\x82\xAC ~";
    EXPECT_EQ(terminal_text(text), text);
    EXPECT_EQ(terminal_text(""), "");
}

TEST(terminal_text, shows_every_other_control_character) {
    for (int code = 0; code < 0x20; ++code) {
        if (code == '\n' || code == '\t') continue;
        EXPECT_EQ(terminal_text("a" + std::string(1, static_cast<char>(code)) + "b"), "a?b") << code;
    }
    EXPECT_EQ(terminal_text("\x7F"), "?");
    EXPECT_EQ(terminal_text("\x1B]0;title\x07\x1B[2J"), "?]0;title??[2J");
    EXPECT_EQ(terminal_text("over\rwritten\r"), "over?written?");
}

TEST(terminal_text, shows_control_characters_of_the_upper_half_in_either_form) {
    EXPECT_EQ(terminal_text("\xC2\x9B"
                            "2J\xC2\x9C"),
              "?2J?");
    EXPECT_EQ(terminal_text("\xFF\x9D"), "\xC3\xBF?") << "bytes of the character set";
    EXPECT_EQ(terminal_text("\xFF\x80"), "\xC3\xBF\xE2\x82\xAC");
}

} // namespace
} // namespace desk
