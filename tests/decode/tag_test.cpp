#include "translate/decode/tag.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::edid_of;
using test::text_of;

TEST(tag, is_shown_with_its_address_in_two_digits_each) {
    const edid_buffer edid = edid_of({{3, {0x0A}}, {57, {0x10}}, {132, {0xA1}}, {255, {0xFF}}});
    const auto text_at = [&](std::uint8_t address) {
        return text_of([&](std::string& text) { print_tag(text, edid, address); });
    };
    EXPECT_EQ(text_at(3), "Tag address = 0x03\r\nTag data = 0x0A");
    EXPECT_EQ(text_at(57), "Tag address = 0x39\r\nTag data = 0x10");
    EXPECT_EQ(text_at(132), "Tag address = 0x84\r\nTag data = 0xA1");
    EXPECT_EQ(text_at(255), "Tag address = 0xFF\r\nTag data = 0xFF");
    EXPECT_EQ(text_at(0), "Tag address = 0x00\r\nTag data = 0x00");
}

} // namespace
} // namespace desk
