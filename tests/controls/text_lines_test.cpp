#include "controls/text_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

std::vector<std::string> all_lines(const text_lines& lines) {
    std::vector<std::string> found;
    for (std::size_t i = 0; i < lines.count(); ++i)
        found.emplace_back(lines.line(i));
    return found;
}

text_lines lines_of(std::string_view text) {
    text_lines lines;
    lines.replace(text);
    return lines;
}

using strings = std::vector<std::string>;

TEST(text_lines, end_at_cr_lf_cr_or_lf) {
    EXPECT_EQ(all_lines(lines_of("")), strings{""});
    EXPECT_EQ(all_lines(lines_of("one")), strings{"one"});
    EXPECT_EQ(all_lines(lines_of("one\r\ntwo\rthree\nfour\r\n")), (strings{"one", "two", "three", "four", ""}));
    EXPECT_EQ(all_lines(lines_of("\r\n\r\r\n\n\r")), (strings{"", "", "", "", "", ""}));
}

TEST(text_lines, are_the_same_however_the_text_grows) {
    const std::string text = "00 FF\r\n\r\nlonger line\rx\n\r";
    const strings whole = all_lines(lines_of(text));
    for (std::size_t step = 1; step < text.size(); ++step) {
        text_lines lines;
        for (std::size_t size = 0; size < text.size(); size += step)
            lines.grow(std::string_view(text).substr(0, size));
        lines.grow(text);
        EXPECT_EQ(all_lines(lines), whole) << step;
        EXPECT_EQ(lines.longest(), 11U) << step;
    }
}

TEST(text_lines, are_plain_in_ascii_with_cr_lf) {
    EXPECT_TRUE(lines_of("").is_plain());
    EXPECT_TRUE(lines_of("00 FF\r\n\r\n").is_plain());
    for (const char* text : {"\xC3\xA9", "one\ntwo", "one\rtwo", "one\r"})
        EXPECT_FALSE(lines_of(text).is_plain()) << text;
}

TEST(text_lines, forget_the_old_text) {
    text_lines lines = lines_of("a long line\r\nanother");
    lines.replace("x");
    EXPECT_EQ(lines.count(), 1U);
    EXPECT_EQ(lines.longest(), 1U);
}

TEST(text_lines, count_a_column_for_each_character) {
    const std::string text = "ab\r\nc\xC3\xA9\xE2\x82\xAC" // three characters of one, two and three bytes
                             "d\r\n";
    const text_lines lines = lines_of(text);
    EXPECT_EQ(lines.line_at(0), 0U);
    EXPECT_EQ(lines.line_at(2), 0U);
    EXPECT_EQ(lines.line_at(4), 1U);
    EXPECT_EQ(lines.line_at(text.size()), 2U);
    EXPECT_EQ(lines.column_at(10), 3U);
    EXPECT_EQ(lines.offset_of(1, 2), 7U);
    EXPECT_EQ(lines.offset_of(1, 3), 10U);
    EXPECT_EQ(lines.offset_of(1, 99), 11U);
    EXPECT_EQ(lines.offset_of(0, 99), 2U);
}

TEST(text_lines, move_a_cursor_by_characters_both_ways) {
    const std::string text = "a\xC3\xA9\r\n\r\nb";
    const text_lines lines = lines_of(text);
    const std::vector<std::size_t> stops = {0, 1, 3, 5, 7, 8};
    for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
        EXPECT_EQ(lines.next_character(stops[i]), stops[i + 1]);
        EXPECT_EQ(lines.previous_character(stops[i + 1]), stops[i]);
    }
    EXPECT_EQ(lines.next_character(text.size()), text.size());
    EXPECT_EQ(lines.previous_character(0), 0U);
}

TEST(text_lines, move_a_cursor_by_words_both_ways) {
    //                         0  3  6 8   11
    const std::string text = "00 FF //F\r\nA";
    const text_lines lines = lines_of(text);
    const std::vector<std::size_t> stops = {0, 3, 6, 8, 11};
    for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
        EXPECT_EQ(lines.next_word(stops[i]), stops[i + 1]);
        EXPECT_EQ(lines.previous_word(stops[i + 1]), stops[i]);
    }
    EXPECT_EQ(lines.next_word(11), 12U);
    EXPECT_EQ(lines.previous_word(0), 0U);
}

TEST(text_lines, find_the_word_and_the_line_around_an_offset) {
    const text_lines lines = lines_of("00 FF //F\r\n\r\nA");
    const auto word = [&](std::size_t offset) {
        const text_lines::range found = lines.word_at(offset);
        return std::string(lines.text().substr(found.begin, found.end - found.begin));
    };
    EXPECT_EQ(word(4), "FF");
    EXPECT_EQ(word(3), "FF");
    EXPECT_EQ(word(5), " ");
    EXPECT_EQ(word(7), "//");
    EXPECT_EQ(word(9), "F"); // the line's end
    EXPECT_EQ(word(11), "");
    EXPECT_EQ(word(14), "A");
    EXPECT_EQ(lines.whole_line(0).end, 11U);
    EXPECT_EQ(lines.whole_line(2).begin, 13U);
    EXPECT_EQ(lines.whole_line(2).end, 14U);
}

} // namespace
} // namespace desk
