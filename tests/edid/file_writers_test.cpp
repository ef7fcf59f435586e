#include "edid/format/file_writers.h"

#include "edid/format/file_readers.h"
#include "runtime/text.h"
#include "support/edid_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::good_edid;
using test::some_bytes;
using test::window_text_of;

constexpr std::size_t written_lengths[] = {0, 1, 7, 8, 20, 127, 128, 129, 255, 256, 257, 300};

const std::string edid = good_edid();

/// The bytes that a reader of HEX files takes out of a file.
std::string read_again(std::string_view file) {
    struct collected final : public byte_receiver {
        std::string data;
        void take(std::uint8_t byte) override { data.push_back(static_cast<char>(byte)); }
    } bytes;
    EXPECT_TRUE(read_hex(file, bytes));
    return bytes.data;
}

TEST(bin_of, has_a_byte_for_each_pair) {
    EXPECT_EQ(bin_of("00 FF 0a //7\r\n\r\n31 "), std::string("\x00\xFF\x0A\x31", 4));
    for (const std::size_t length : written_lengths)
        EXPECT_EQ(bin_of(window_text_of(some_bytes(length))), some_bytes(length)) << length;
}

TEST(bin_of, reads_any_text_by_position) {
    EXPECT_EQ(bin_of("Reading HDMI"), std::string("\x00\x0D\x00\x0D", 4)) << "Re, di, g and a space, DM";
    EXPECT_EQ(bin_of("\r\nLink Error !\r\n"), std::string(4, '\0')) << "Li, k and a space, rr, r and a space";
}

TEST(simple_hex_of, is_the_unchanged_text_and_a_line_end) {
    EXPECT_EQ(simple_hex_of(""), "\r\n");
    EXPECT_EQ(simple_hex_of("00 FF "), "00 FF \r\n");
    EXPECT_EQ(simple_hex_of(window_text_of(edid)), window_text_of(edid) + "\r\n");
    EXPECT_EQ(simple_hex_of("\r\nTimeout ! Read fail !"), "\r\nTimeout ! Read fail !\r\n");
}

TEST(c_language_hex_of, has_a_line_for_each_line) {
    EXPECT_EQ(c_language_hex_of("00 FF FF FF FF FF FF 00 //7\r\n"), "0x00,0xFF,0xFF,0xFF,0xFF,0xFF,0xFF,0x00, //7\r\n");
    EXPECT_EQ(c_language_hex_of("3C //7F\r\n\r\n02 //87\r\n"), "0x3C, //7F\r\n\r\n0x02, //87\r\n");
}

TEST(c_language_hex_of, loses_the_bytes_after_the_last_comment) {
    EXPECT_EQ(c_language_hex_of("01 02 03 "), "");
    EXPECT_EQ(read_again(c_language_hex_of(window_text_of(some_bytes(20)))), some_bytes(16));
    EXPECT_EQ(c_language_hex_of("01 //7\r\n02 //F"), "0x01, //7\r\n") << "a comment without its CR";
}

TEST(c_language_hex_of, prints_an_empty_line_and_keeps_what_is_collected) {
    EXPECT_EQ(c_language_hex_of("01 \r\n02 //F\r\n"), "\r\n0x01,0x02, //F\r\n");
    EXPECT_EQ(c_language_hex_of("\r\n\r\n"), "\r\n\r\n");
}

TEST(files, of_random_bytes_give_the_same_bytes_when_they_are_read_again) {
    test::random_edids random(2);
    for (int i = 0; i < 300; ++i) {
        const std::string data = random.next();
        const std::string text = window_text_of(data);
        ASSERT_EQ(bin_of(text), data);
        ASSERT_EQ(read_again(simple_hex_of(text)), data);
        ASSERT_EQ(read_again(c_language_hex_of(text)), data);
    }
}

} // namespace
} // namespace desk
