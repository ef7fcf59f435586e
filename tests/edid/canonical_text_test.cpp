#include "edid/format/canonical_text.h"

#include "support/edid_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

std::string whole_text(std::string_view data) {
    std::string text;
    for (std::size_t i = 0; i < data.size(); ++i)
        text += canonical_piece(static_cast<std::uint8_t>(test::byte_at(data, i)), i);
    return text;
}

TEST(canonical_piece, has_two_upper_case_digits_and_a_space) {
    EXPECT_EQ(canonical_piece(0x00, 0), "00 ");
    EXPECT_EQ(canonical_piece(0x0A, 1), "0A ");
    EXPECT_EQ(canonical_piece(0xA0, 2), "A0 ");
    EXPECT_EQ(canonical_piece(0xFF, 6), "FF ");
}

TEST(canonical_piece, ends_the_line_after_the_eighth_byte) {
    EXPECT_EQ(canonical_piece(0x00, 7), "00 //7\r\n");
    EXPECT_EQ(canonical_piece(0x00, 8), "00 ");
    EXPECT_EQ(canonical_piece(0x1C, 15), "1C //F\r\n");
    EXPECT_EQ(canonical_piece(0x1C, 23), "1C //17\r\n");
}

TEST(canonical_piece, leaves_an_empty_line_between_the_blocks) {
    EXPECT_EQ(canonical_piece(0x3C, 127), "3C //7F\r\n\r\n");
    EXPECT_EQ(canonical_piece(0x3C, 128), "3C ");
    EXPECT_EQ(canonical_piece(0x3C, 255), "3C //FF\r\n");
}

TEST(canonical_piece, continues_in_the_same_way_after_256_bytes) {
    EXPECT_EQ(canonical_piece(0x11, 256), "11 ");
    EXPECT_EQ(canonical_piece(0x11, 263), "11 //107\r\n");
    EXPECT_EQ(canonical_piece(0x11, 383), "11 //17F\r\n");
}

TEST(canonical_text, is_the_same_for_every_length) {
    const std::string data = test::some_bytes(600);
    for (std::size_t length = 0; length <= data.size(); ++length)
        ASSERT_EQ(whole_text(data.substr(0, length)), test::window_text_of(data.substr(0, length)));
}

} // namespace
} // namespace desk
