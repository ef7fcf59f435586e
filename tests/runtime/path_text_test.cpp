#include "runtime/path_text.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

namespace desk {
namespace {

TEST(path_part_0, is_all_before_the_last_backslash) {
    EXPECT_EQ(path_part("C:\\edid\\sink.hex", 0), "C:\\edid");
    EXPECT_EQ(path_part("C:\\sink.hex", 0), "C:");
    EXPECT_EQ(path_part("C:\\edid\\", 0), "C:\\edid");
}

TEST(path_part_1, is_short_for_display) {
    EXPECT_EQ(path_part("C:\\edid\\long\\sink.hex", 1), "C:\\...\\sink.hex");
    EXPECT_EQ(path_part("\\\\server\\share\\x.hex", 1), "\\\\s...\\x.hex");
}

TEST(path_part_1, is_the_path_if_the_backslash_is_the_third_character) {
    EXPECT_EQ(path_part("C:\\sink.hex", 1), "C:\\sink.hex");
    EXPECT_EQ(path_part("C:\\", 1), "C:\\");
}

TEST(path_part_1, is_longer_than_the_path_if_that_is_short) {
    EXPECT_EQ(path_part("a\\b", 1), "a\\b...\\b") << "the first three characters, whatever they are";
}

TEST(path_part_2, is_all_after_the_last_backslash) {
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

TEST(without_extension, cuts_at_the_last_point_that_does_not_begin_the_name) {
    for (const auto& [given, expected] :
         std::initializer_list<std::pair<const char*, const char*>>{{"sink.hex", "sink"},
                                                                    {"sink.old.hex", "sink.old"},
                                                                    {"sink.", "sink"},
                                                                    {"sink", "sink"},
                                                                    {".sink", ".sink"},
                                                                    {".sink.hex", ".sink"}})
        EXPECT_EQ(without_extension(given), expected) << given;
}

} // namespace
} // namespace desk
