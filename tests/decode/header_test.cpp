#include "translate/decode/header.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::text_of;

const std::vector<int> good_header = {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};

TEST(header, is_that_of_a_vesa_basic_block) {
    EXPECT_TRUE(is_vesa_basic_block(edid_of({{0, good_header}})));
    EXPECT_TRUE(is_vesa_basic_block(edid_of({{0, good_header}, {8, {1, 2, 3}}, {128, {2}}})));
    EXPECT_FALSE(is_vesa_basic_block({}));
}

TEST(header, must_have_each_of_its_eight_bytes) {
    for (std::size_t i = 0; i < good_header.size(); ++i)
        EXPECT_FALSE(is_vesa_basic_block(edid_of({{0, good_header}, {i, {0x7F}}}))) << i;
}

TEST(header, is_told_byte_by_byte_with_a_blank_behind_each) {
    EXPECT_EQ(text_of([](std::string& text) {
                  print_header(text, edid_of({{0, good_header}, {8, {0xAA}}}));
              }),
              "Header = 00 FF FF FF FF FF FF 00 ");
    EXPECT_EQ(text_of([](std::string& text) {
                  print_header(text, edid_of({{0, {1, 2, 10, 15, 16, 0xAB, 0, 0xFF}}}));
              }),
              "Header = 01 02 0A 0F 10 AB 00 FF ");
}

TEST(header, stands_behind_what_was_there) {
    test::expect_appends([](std::string& text) { print_header(text, {}); });
}

} // namespace
} // namespace desk
