#include "runtime/windows_1252.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace desk {
namespace {

// 0x80 to 0x9F as characters; an empty entry is one of the five codes that map to themselves
constexpr std::array<const char*, 32> upper_controls = {
    "€", "",  "‚", "ƒ", "„", "…", "†", "‡", "ˆ", "‰", "Š", "‹", "Œ", "", "Ž", "",
    "",  "‘", "’", "“", "”", "•", "–", "—", "˜", "™", "š", "›", "œ", "", "ž", "Ÿ",
};

std::string byte_text(int code) { return std::string(1, static_cast<char>(code)); }

TEST(character_set, keeps_ascii) {
    for (int code = 0; code < 0x80; ++code)
        EXPECT_EQ(text_from_bytes(byte_text(code)), byte_text(code));
}

TEST(character_set, has_its_own_characters_from_80_to_9f) {
    for (int i = 0; i < 32; ++i) {
        const std::string expected = upper_controls.at(static_cast<std::size_t>(i));
        const int code = 0x80 + i;
        if (!expected.empty())
            EXPECT_EQ(text_from_bytes(byte_text(code)), expected) << std::hex << code;
        else
            EXPECT_EQ(character_of(static_cast<std::uint8_t>(code)), static_cast<char32_t>(code)) << std::hex << code;
    }
}

TEST(character_set, is_the_same_as_unicode_from_a0_on) {
    for (unsigned code = 0xA0; code <= 0xFF; ++code)
        EXPECT_EQ(character_of(static_cast<std::uint8_t>(code)), char32_t{code});
    EXPECT_EQ(text_from_bytes("\xE4\xDF"), "äß");
}

TEST(character_set, round_trips_every_byte) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all += byte_text(code);
    const std::string text = text_from_bytes(all);
    EXPECT_EQ(character_count(text), 256U);
    EXPECT_EQ(bytes_from_text(text), all);
}

TEST(bytes_from_text, has_a_question_mark_for_a_character_without_a_byte) {
    EXPECT_EQ(bytes_from_text("aΩb"), "a?b");
    EXPECT_EQ(bytes_from_text("€Ž"), "\x80\x8E");
    EXPECT_EQ(bytes_from_text("\xC2\x80"), "?") << "U+0080 has no byte: 0x80 is the euro";
}

TEST(bytes_from_text, keeps_invalid_utf8) { EXPECT_EQ(bytes_from_text("\xFF\x80x"), "\xFF\x80x"); }

TEST(append_utf8, writes_one_to_four_bytes) {
    const auto utf8 = [](char32_t c) {
        std::string text;
        append_utf8(text, c);
        return text;
    };
    EXPECT_EQ(utf8(0x41), "A");
    EXPECT_EQ(utf8(0x7F), "\x7F");
    EXPECT_EQ(utf8(0x80), "\xC2\x80");
    EXPECT_EQ(utf8(0x7FF), "\xDF\xBF");
    EXPECT_EQ(utf8(0x800), "\xE0\xA0\x80");
    EXPECT_EQ(utf8(0xFFFF), "\xEF\xBF\xBF");
    EXPECT_EQ(utf8(0x10000), "\xF0\x90\x80\x80");
    EXPECT_EQ(utf8(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

TEST(append_utf8, replaces_invalid_characters) {
    for (const char32_t c : {char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0x110000}}) {
        std::string text;
        append_utf8(text, c);
        EXPECT_EQ(text, "\xEF\xBF\xBD");
    }
}

TEST(characters_of, knows_utf8) {
    EXPECT_EQ(characters_of("a€"), (std::vector<char32_t>{'a', 0x20AC}));
    EXPECT_EQ(characters_of("\xF0\x9F\x98\x80"), (std::vector<char32_t>{0x1F600}));
    EXPECT_TRUE(characters_of("").empty());
}

TEST(characters_of, reads_invalid_utf8_as_bytes) {
    EXPECT_EQ(characters_of("\x80"), (std::vector<char32_t>{0x20AC})) << "a lone following byte";
    EXPECT_EQ(characters_of("a\xC3"), (std::vector<char32_t>{'a', 0xC3})) << "cut off";
    EXPECT_EQ(characters_of("\xC1\x81").size(), 2U) << "overlong";
    EXPECT_EQ(characters_of("\xE0\x80\x81").size(), 3U) << "overlong";
    EXPECT_EQ(characters_of("\xF0\x8F\xBF\xBF").size(), 4U) << "overlong";
    EXPECT_EQ(characters_of("\xED\xA0\x80").size(), 3U) << "half a pair";
    EXPECT_EQ(characters_of("\xF4\x90\x80\x80").size(), 4U) << "above the last character";
    EXPECT_EQ(characters_of("\xC3(").size(), 2U) << "a wrong following byte";
}

TEST(first_characters, cuts_between_characters) {
    EXPECT_EQ(first_characters("äöü", 2), "äö");
    EXPECT_EQ(first_characters("C:\\x", 3), "C:\\");
    EXPECT_EQ(first_characters("ab", 5), "ab");
    EXPECT_EQ(first_characters("ab", 0), "");
}

TEST(last_characters, cuts_between_characters) {
    EXPECT_EQ(last_characters("äöü", 2), "öü");
    EXPECT_EQ(last_characters("a.hex", 4), ".hex");
    EXPECT_EQ(last_characters("a€b", 2), "€b");
    EXPECT_EQ(last_characters("ab", 2), "ab");
    EXPECT_EQ(last_characters("ab", 5), "ab");
    EXPECT_EQ(last_characters("ab", 0), "");
    EXPECT_EQ(last_characters("", 3), "");
}

TEST(without_last_characters, cuts_between_characters) {
    EXPECT_EQ(without_last_characters("äöü", 2), "ä");
    EXPECT_EQ(without_last_characters("a.hex", 4), "a");
    EXPECT_EQ(without_last_characters("größe", 0), "größe");
    EXPECT_EQ(without_last_characters(".hex", 4), "");
    EXPECT_EQ(without_last_characters("ä€öü", 4), "");
    EXPECT_EQ(without_last_characters("", 0), "");
}

TEST(without_last_characters, fails_for_a_text_that_is_shorter) {
    for (const char* text : {"", "a", "abc", "äöü"})
        EXPECT_EQ(test::failure_of([&] { without_last_characters(text, 4); }), failure::invalid_procedure_call) << text;
}

TEST(as_utf8, keeps_utf8_and_reads_the_rest_as_bytes) {
    EXPECT_EQ(as_utf8("grün"), "grün");
    EXPECT_EQ(as_utf8("gr\xFCn"), "grün");
    EXPECT_EQ(as_utf8("\x80"), "€");
}

} // namespace
} // namespace desk
