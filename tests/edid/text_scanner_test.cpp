#include "edid/format/text_scanner.h"

#include "runtime/text.h"
#include "support/edid_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

/// Records what is found: "[00]" for a pair, "//" and the characters of a comment, "<" where a comment ends, "-"
/// for an empty line.
class noted_findings final : public text_findings {
public:
    std::string all;
    void pair(std::string_view digits) override { all.append("[").append(digits).append("]"); }
    void comment_begins() override { all += "//"; }
    void comment_character(char c) override { all.push_back(c); }
    void comment_ends() override { all += "<"; }
    void empty_line() override { all += "-"; }
};

std::string found_in(std::string_view text) {
    noted_findings found;
    scan_window_text(text, found);
    return found.all;
}

TEST(scan_window_text, finds_pairs_and_the_offset_of_a_line) {
    EXPECT_EQ(found_in("00 FF FF FF FF FF FF 00 //7\r\n"), "[00][FF][FF][FF][FF][FF][FF][00]//7<");
    EXPECT_EQ(found_in("3C //7F\r\n\r\n02 "), "[3C]//7F<-[02]");
    EXPECT_EQ(found_in("01 //FF\r\n"), "[01]//FF<");
}

TEST(scan_window_text, finds_nothing_in_nothing) { EXPECT_EQ(found_in(""), ""); }

TEST(scan_window_text, skips_two_characters_after_one_slash) {
    EXPECT_EQ(found_in("/12345\r\n01 "), "//2345<[01]");
    EXPECT_EQ(found_in("11 /ab\r\n22 "), "[11]//b<[22]");
}

TEST(scan_window_text, looks_at_the_third_character_of_a_comment_at_once) {
    EXPECT_EQ(found_in("11 //\r\n22 "), "[11]//<[22]") << "the CR is that character";
    EXPECT_EQ(found_in("11 /\r\n22 \r\n33 "), "[11]//\n22 <[33]") << "the CR is passed over";
}

TEST(scan_window_text, begins_a_comment_again_at_each_slash) { EXPECT_EQ(found_in("//7//F/xy\r\n"), "//7//F//y<"); }

TEST(scan_window_text, ends_inside_a_comment) {
    EXPECT_EQ(found_in("11 //7"), "[11]//7");
    EXPECT_EQ(found_in("11 //"), "[11]//");
    EXPECT_EQ(found_in("11 /"), "[11]//");
    EXPECT_EQ(found_in("11 //7\r"), "[11]//7<");
}

TEST(scan_window_text, returns_an_incomplete_last_pair) {
    EXPECT_EQ(found_in("11 2"), "[11][2]");
    EXPECT_EQ(found_in("11 22"), "[11][22]");
    EXPECT_EQ(found_in("1"), "[1]");
}

TEST(scan_window_text, trusts_the_places_of_the_characters) {
    EXPECT_EQ(found_in("AABBCC"), "[AA][BC]");
    EXPECT_EQ(found_in(" 11 22"), "[ 1][ 2]");
    EXPECT_EQ(found_in("Reading"), "[Re][di][g]");
    EXPECT_EQ(found_in("11\r\n22 "), "[11][\n2][ ]") << "the CR is in the place of the space";
    EXPECT_EQ(found_in("1\r\n2/3"), "[1\r][2/]") << "the inside of a pair is not looked at";
}

TEST(scan_window_text, treats_a_single_lf_as_the_start_of_a_pair) { EXPECT_EQ(found_in("\n11 "), "[\n1][ ]"); }

TEST(scan_window_text, skips_one_character_after_each_cr) {
    EXPECT_EQ(found_in("\r\n\r\n11 "), "--[11]");
    EXPECT_EQ(found_in("\rx11 "), "-[11]");
    EXPECT_EQ(found_in("//7\rx11 "), "//7<[11]");
    EXPECT_EQ(found_in("\r"), "-");
}

TEST(value_of_pair, is_its_hexadecimal_number_in_either_case) {
    for (int value = 0; value < 256; ++value) {
        EXPECT_EQ(value_of_pair(test::window_text_of(std::string(1, static_cast<char>(value))).substr(0, 2)), value);
    }
    EXPECT_EQ(value_of_pair("aF"), 0xAF);
    EXPECT_EQ(value_of_pair("fa"), 0xFA);
}

TEST(value_of_pair, is_its_longest_hexadecimal_start) {
    EXPECT_EQ(value_of_pair("7"), 0x07);
    EXPECT_EQ(value_of_pair("7G"), 0x07);
    EXPECT_EQ(value_of_pair("e "), 0x0E);
    EXPECT_EQ(value_of_pair("B\r"), 0x0B);
}

TEST(value_of_pair, is_0_without_a_hexadecimal_start) {
    for (const char* digits : {"", "G", "G1", " 1", "Re", "\r\n", "-1", "x1"})
        EXPECT_EQ(value_of_pair(digits), 0) << digits;
}

} // namespace
} // namespace desk
