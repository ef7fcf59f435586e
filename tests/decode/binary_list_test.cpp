#include "translate/decode/binary_list.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::text_of;

/// Each byte tells its address.
edid_buffer counted() {
    edid_buffer edid{};
    for (std::size_t i = 0; i < edid.size(); ++i)
        edid.at(i) = static_cast<std::uint8_t>(i);
    return edid;
}

TEST(binary_list, has_eight_bytes_to_a_line_and_the_address_of_the_last) {
    EXPECT_EQ(text_of([](std::string& text) { print_binary_list(text, counted(), 0); }),
              "00 01 02 03 04 05 06 07 //7\r\n"
              "08 09 0A 0B 0C 0D 0E 0F //F\r\n"
              "10 11 12 13 14 15 16 17 //17\r\n"
              "18 19 1A 1B 1C 1D 1E 1F //1F\r\n"
              "20 21 22 23 24 25 26 27 //27\r\n"
              "28 29 2A 2B 2C 2D 2E 2F //2F\r\n"
              "30 31 32 33 34 35 36 37 //37\r\n"
              "38 39 3A 3B 3C 3D 3E 3F //3F\r\n"
              "40 41 42 43 44 45 46 47 //47\r\n"
              "48 49 4A 4B 4C 4D 4E 4F //4F\r\n"
              "50 51 52 53 54 55 56 57 //57\r\n"
              "58 59 5A 5B 5C 5D 5E 5F //5F\r\n"
              "60 61 62 63 64 65 66 67 //67\r\n"
              "68 69 6A 6B 6C 6D 6E 6F //6F\r\n"
              "70 71 72 73 74 75 76 77 //77\r\n"
              "78 79 7A 7B 7C 7D 7E 7F //7F\r\n");
}

TEST(binary_list, goes_on_counting_in_block_1) {
    EXPECT_EQ(text_of([](std::string& text) { print_binary_list(text, counted(), 1); }),
              "80 81 82 83 84 85 86 87 //87\r\n"
              "88 89 8A 8B 8C 8D 8E 8F //8F\r\n"
              "90 91 92 93 94 95 96 97 //97\r\n"
              "98 99 9A 9B 9C 9D 9E 9F //9F\r\n"
              "A0 A1 A2 A3 A4 A5 A6 A7 //A7\r\n"
              "A8 A9 AA AB AC AD AE AF //AF\r\n"
              "B0 B1 B2 B3 B4 B5 B6 B7 //B7\r\n"
              "B8 B9 BA BB BC BD BE BF //BF\r\n"
              "C0 C1 C2 C3 C4 C5 C6 C7 //C7\r\n"
              "C8 C9 CA CB CC CD CE CF //CF\r\n"
              "D0 D1 D2 D3 D4 D5 D6 D7 //D7\r\n"
              "D8 D9 DA DB DC DD DE DF //DF\r\n"
              "E0 E1 E2 E3 E4 E5 E6 E7 //E7\r\n"
              "E8 E9 EA EB EC ED EE EF //EF\r\n"
              "F0 F1 F2 F3 F4 F5 F6 F7 //F7\r\n"
              "F8 F9 FA FB FC FD FE FF //FF\r\n");
}

TEST(binary_list, stands_behind_what_was_there) {
    for (const std::size_t block : {0U, 1U})
        test::expect_appends([&](std::string& text) { print_binary_list(text, counted(), block); });
}

} // namespace
} // namespace desk
