#include "translate/decode/vsdb.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::lines;
using test::text_of;
using test::text_till;
using test::value_after;

/// An EDID with a block at an address, with this length in its header.
edid_buffer edid_with(std::uint8_t address, int length, const std::vector<int>& after_header) {
    return edid_of({{address, {0x60 + length}}, {address + 1U, after_header}});
}
std::string vsdb_text(int length, const std::vector<int>& after_header) {
    return text_of([&](std::string& text) { decode_vsdb(text, edid_with(132, length, after_header), 132); });
}
std::string vsdb_text_till(failure expected, std::uint8_t address, int length, const std::vector<int>& after_header) {
    return text_till(expected,
                     [&](std::string& text) { decode_vsdb(text, edid_with(address, length, after_header), address); });
}
std::vector<int> hdmi(const std::vector<int>& fields) {
    std::vector<int> bytes = {0x03, 0x0C, 0x00};
    bytes.insert(bytes.end(), fields.begin(), fields.end());
    return bytes;
}
std::string head(int length, const std::string& identifier) {
    return "VSDB block size = " + std::to_string(length) + "\r\nIEEE Registration Id = 0x" + identifier + "\r\n";
}

const std::string address_lines = "CEC Physical Address A.B.C.D =\r\n    1 . 0 . 0 . 0\r\n";
const std::string support_lines = lines({
    "Supports_AI = Supported",
    "Deep Color(bit) = 48/36/30",
    "YCbCr444 Deep Color = Supported",
    "DVI Dual Link = Supported",
});
const std::string clock_line = "Max TMDS Clock = 300 MHz\r\n";
const std::string latency_lines = lines({"Latency Fields = Present", "Interlaced Latency Fields = Present"});

TEST(vsdb_of_hdmi, is_shown_up_to_its_length) {
    const std::vector<int> all = hdmi({0x10, 0x00, 0xF9, 60, 0xC0, 1, 2, 3, 4});
    const std::string shown[] = {
        "",
        address_lines,
        address_lines + support_lines,
        address_lines + support_lines + clock_line,
        address_lines + support_lines + clock_line + latency_lines,
    };
    for (int length = 0; length < 32; ++length) {
        const int groups = length < 5 ? 0 : length > 8 ? 4 : length - 4;
        EXPECT_EQ(vsdb_text(length, all), head(length, "000C03") + shown[groups]);
    }
}

TEST(vsdb_of_hdmi, has_a_physical_address_of_four_numbers) {
    const auto address_of = [](int ab, int cd) {
        const std::string text = vsdb_text(5, hdmi({ab, cd}));
        return text.substr(text.find("=\r\n   ") + 6);
    };
    EXPECT_EQ(address_of(0x10, 0x00), " 1 . 0 . 0 . 0\r\n");
    EXPECT_EQ(address_of(0x12, 0x34), " 1 . 2 . 3 . 4\r\n");
    EXPECT_EQ(address_of(0xFE, 0xDC), " 15 . 14 . 13 . 12\r\n");
}

TEST(vsdb_of_hdmi, has_a_line_for_each_flag) {
    const char* const depths[] = {"Not Supported", "30", "36/", "36/30", "48/", "48/30", "48/36/", "48/36/30"};
    for (int bits = 0; bits < 256; ++bits) {
        const std::string text = vsdb_text(6, hdmi({0, 0, bits}));
        const auto word = [&](int mask) { return (bits & mask) != 0 ? "Supported" : "Not Supported"; };
        EXPECT_EQ(value_after("Supports_AI = ", text), word(0x80)) << bits;
        EXPECT_EQ(value_after("Deep Color(bit) = ", text), depths[bits / 16 % 8]) << bits;
        EXPECT_EQ(value_after("YCbCr444 Deep Color = ", text), word(0x08)) << bits;
        EXPECT_EQ(value_after("DVI Dual Link = ", text), word(0x01)) << bits;
    }
}

TEST(vsdb_of_hdmi, has_a_clock_of_5_mhz_for_each_step) {
    for (const int byte : {0, 1, 33, 60, 255})
        EXPECT_EQ(value_after("Max TMDS Clock =", vsdb_text(7, hdmi({0, 0, 0, byte}))),
                  " " + std::to_string(5 * byte) + " MHz");
}

TEST(vsdb_of_hdmi, shows_whether_there_are_latency_fields) {
    for (int bits = 0; bits < 256; ++bits) {
        const std::string text = vsdb_text(8, hdmi({0, 0, 0, 0, bits}));
        EXPECT_EQ(value_after("Latency Fields = ", text), (bits & 0x80) != 0 ? "Present" : "Not Present") << bits;
        EXPECT_EQ(value_after("Interlaced Latency Fields = ", text), (bits & 0x40) != 0 ? "Present" : "Not Present");
    }
}

TEST(vsdb_of_hdmi, fails_beyond_the_edid_with_the_label_of_what_is_missing) {
    const auto text_at = [](std::uint8_t address, const std::vector<int>& fields) {
        return vsdb_text_till(failure::subscript_out_of_range, address, 8, hdmi(fields));
    };
    EXPECT_EQ(text_at(252, {}), head(8, "000C03") + "CEC Physical Address A.B.C.D =\r\n   ");
    EXPECT_EQ(text_at(250, {0x10, 0x00}), head(8, "000C03") + address_lines + "Supports_AI = ");
    EXPECT_EQ(text_at(249, {0x10, 0x00, 0xF9}), head(8, "000C03") + address_lines + support_lines + "Max TMDS Clock =");
    EXPECT_EQ(text_at(248, {0x10, 0x00, 0xF9, 60}),
              head(8, "000C03") + address_lines + support_lines + clock_line + "Latency Fields = ");
}

TEST(vsdb_of_another_vendor, is_shown_as_payload_in_rows_of_five) {
    const std::vector<int> bytes = {0x12, 0x34, 0xAB, 0x01, 0x02, 0x0A, 0xB0, 0xFF, 0x00, 0x07, 0x99};
    const std::vector<std::pair<int, std::string>> rows = {
        {4, "01 \r\n"},
        {5, "01 02 \r\n"},
        {8, "01 02 0A B0 FF \r\n"},
        {9, "01 02 0A B0 FF \r\n00 \r\n"},
        {10, "01 02 0A B0 FF \r\n00 07 \r\n"},
    };
    for (const auto& [length, dump] : rows)
        EXPECT_EQ(vsdb_text(length, bytes), head(length, "AB3412") + "Payload =\r\n" + dump);
}

TEST(vsdb_of_another_vendor, differs_in_any_of_the_three_bytes) {
    const std::vector<std::pair<std::vector<int>, std::string>> identifiers = {
        {{0x03, 0x0C, 0x01}, "010C03"}, {{0x03, 0x0D, 0x00}, "000D03"}, {{0x02, 0x0C, 0x00}, "000C02"}};
    for (const auto& [bytes, digits] : identifiers)
        EXPECT_EQ(vsdb_text(4, bytes), head(4, digits) + "Payload =\r\n00 \r\n");
}

TEST(vsdb_of_another_vendor, fails_without_payload) {
    EXPECT_EQ(vsdb_text_till(failure::overflow, 132, 3, {1, 2, 3}), head(3, "030201") + "Payload =\r\n");
    for (const int length : {0, 1, 2})
        EXPECT_EQ(vsdb_text_till(failure::overflow, 132, length, {1, 2, 3}), head(length, "030201"));
}

TEST(vsdb_of_another_vendor, fails_beyond_the_edid_with_the_bytes_before) {
    EXPECT_EQ(vsdb_text_till(failure::subscript_out_of_range, 249, 20, {1, 2, 3, 0x11, 0x22, 0x33}),
              head(20, "030201") + "Payload =\r\n11 22 33 ");
    EXPECT_EQ(vsdb_text_till(failure::subscript_out_of_range, 247, 20, {1, 2, 3, 0x11, 0x22, 0x33, 0x44, 0x55}),
              head(20, "030201") + "Payload =\r\n11 22 33 44 55 \r\n");
}

TEST(vsdb, fails_beyond_the_edid_in_its_identifier) {
    for (const std::uint8_t address : test::byte_list{253, 254, 255})
        EXPECT_EQ(vsdb_text_till(failure::subscript_out_of_range, address, 5, {}),
                  "VSDB block size = 5\r\nIEEE Registration Id = 0x");
}

} // namespace
} // namespace desk
