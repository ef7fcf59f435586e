#include "cli/line_words.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk::cli {
namespace {

using words = std::vector<std::string>;

TEST(line_words, are_separated_by_spaces_and_tabs) {
    EXPECT_EQ(words_of_line("set timing 7"), (words{"set", "timing", "7"}));
    EXPECT_EQ(words_of_line("  set\t timing   7\t"), (words{"set", "timing", "7"}));
    EXPECT_EQ(words_of_line(""), words{});
    EXPECT_EQ(words_of_line(" \t "), words{});
}

TEST(line_words, are_kept_together_by_quotation_marks) {
    EXPECT_EQ(words_of_line("set timing '720x400 85Hz'"), (words{"set", "timing", "720x400 85Hz"}));
    EXPECT_EQ(words_of_line("edid read \"my unit.hex\""), (words{"edid", "read", "my unit.hex"}));
    EXPECT_EQ(words_of_line("my' 'unit\" \"7"), words{"my unit 7"});
    EXPECT_EQ(words_of_line("\"it's\" '\"'"), (words{"it's", "\""}));
}

TEST(line_words, can_be_empty) {
    EXPECT_EQ(words_of_line("string ''"), (words{"string", ""}));
    EXPECT_EQ(words_of_line("string \"\" ''"), (words{"string", "", ""}));
    EXPECT_EQ(words_of_line("''a\"\""), words{"a"});
}

TEST(line_words, end_at_a_comment) {
    EXPECT_EQ(words_of_line("# set timing 7"), words{});
    EXPECT_EQ(words_of_line("status # the output"), words{"status"});
    EXPECT_EQ(words_of_line("status #'"), words{"status"});
    EXPECT_EQ(words_of_line("string a#b"), (words{"string", "a#b"}));
    EXPECT_EQ(words_of_line("string '#1' \"#2\" \\#3"), (words{"string", "#1", "#2", "#3"}));
}

TEST(line_words, contain_what_a_backslash_keeps) {
    EXPECT_EQ(words_of_line("my\\ unit.hex"), words{"my unit.hex"});
    EXPECT_EQ(words_of_line("\\\"a\\'"), words{"\"a'"});
    EXPECT_EQ(words_of_line("\"a\\\"b\""), words{"a\"b"});
    EXPECT_EQ(words_of_line("a\\\\b"), words{"a\\b"});
}

TEST(line_words, contain_any_other_backslash) {
    EXPECT_EQ(words_of_line("C:\\lab\\unit.hex"), words{"C:\\lab\\unit.hex"});
    EXPECT_EQ(words_of_line("'a\\'"), words{"a\\"});
    EXPECT_EQ(words_of_line("a\\"), words{"a\\"});
}

TEST(line_words, contain_any_other_byte) {
    EXPECT_EQ(words_of_line(std::string("a\0b c", 5)), (words{std::string("a\0b", 3), "c"}));
    EXPECT_EQ(words_of_line("\xFF\x80 \xC3\xA9"), (words{"\xFF\x80", "\xC3\xA9"}));
}

TEST(line_words, need_every_quotation_mark_closed) {
    EXPECT_THROW(words_of_line("string 'HELLO"), unclosed_quote);
    EXPECT_THROW(words_of_line("string \"HELLO'"), unclosed_quote);
    EXPECT_THROW(words_of_line("'"), unclosed_quote);
    EXPECT_THROW(words_of_line("\"C:\\lab\\\""), unclosed_quote) << "the backslash keeps the last one";
}

TEST(line_words, of_a_long_line_take_no_long_time) {
    const std::string long_word(10'000'000, 'x');
    EXPECT_EQ(words_of_line("string " + long_word), (words{"string", long_word}));
    EXPECT_EQ(words_of_line("'" + long_word + "'"), words{long_word});
}

} // namespace
} // namespace desk::cli
