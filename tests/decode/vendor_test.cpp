#include "translate/decode/vendor.h"

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
using test::value_after;

std::string vendor_text(const edid_buffer& edid, double sn_value = 0) {
    return text_of([&](std::string& text) { decode_vendor(text, edid, sn_value); });
}
/// The value after a label for these bytes at an address.
std::string shown_value(const std::string& label, std::size_t address, const std::vector<int>& bytes) {
    return value_after(label, vendor_text(edid_of({{address, bytes}})));
}

const edid_buffer acr = edid_of({{8, {0x04, 0x72, 0xAD, 0xDE}}, {16, {5, 20, 1, 3}}});
const std::string acr_lines = lines({
    "--- Vendor/Product Identification ---",
    "Manufacturer Name = ACR",
    "Product Code = 57005",
    "Serial Number = 305419896",
    "Week of Manufacture = 5",
    "Year of Manufacture = 2010",
    "EDID Version = 1.3",
    "",
    "--- Video Input Definition ---",
});

TEST(vendor, is_shown_with_an_analog_input) {
    EXPECT_EQ(vendor_text(edid_of({{20, {0x0F}}}, acr), 305419896),
              acr_lines + lines({
                              "Signal Type = Analog",
                              "Signal Level (Video/Sync)= 0.700/0.300",
                              "Pedestal Setup = NO",
                              "Seperate Sync = Supported",
                              "Composite Sync = Supported",
                              "Sync On Green = Supported",
                              "Vs Serration = Required",
                          }));
}

TEST(manufacturer_name, has_five_bits_for_each_letter) {
    const std::string letters = R"(@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\]^_)";
    ASSERT_EQ(letters.size(), 32U);
    for (int value = 0; value < 32; ++value) {
        const char letter = letters[static_cast<std::size_t>(value)];
        const auto name = [](int byte_8, int byte_9) {
            return shown_value("Manufacturer Name = ", 8, {byte_8, byte_9});
        };
        EXPECT_EQ(name(value << 2, 0), std::string{letter} + "@@") << value;
        EXPECT_EQ(name(value >> 3, (value & 7) << 5), "@" + std::string{letter} + "@") << value;
        EXPECT_EQ(name(0, value), "@@" + std::string{letter}) << value;
    }
}

TEST(manufacturer_name, does_not_look_at_the_highest_bit) {
    EXPECT_EQ(shown_value("Manufacturer Name = ", 8, {0x80, 0x00}), "@@@");
    EXPECT_EQ(shown_value("Manufacturer Name = ", 8, {0x84, 0x72}), "ACR");
    EXPECT_EQ(shown_value("Manufacturer Name = ", 8, {0xFF, 0xFF}), "___");
}

TEST(product_code, has_its_lower_byte_first) {
    EXPECT_EQ(shown_value("Product Code =", 10, {0x01, 0x00}), " 1");
    EXPECT_EQ(shown_value("Product Code =", 10, {0x00, 0x01}), " 256");
    EXPECT_EQ(shown_value("Product Code =", 10, {0xFF, 0xFF}), " 65535");
}

TEST(serial_number_line, is_shown_as_it_was_read) {
    const edid_buffer other = edid_of({{12, {1, 2, 3, 4}}});
    EXPECT_EQ(value_after("Serial Number =", vendor_text(other, 0)), " 0");
    EXPECT_EQ(value_after("Serial Number =", vendor_text(other, 2147483648)), " 2147483648");
    EXPECT_EQ(value_after("Serial Number =", vendor_text(other, 4294967295)), " 4294967295");
}

TEST(week_of_manufacture, is_shown_unchanged) {
    for (const int week : {0, 1, 54, 255})
        EXPECT_EQ(shown_value("Week of Manufacture =", 16, {week}), " " + std::to_string(week));
}

TEST(year_of_manufacture, counts_from_1990) {
    EXPECT_EQ(shown_value("Year of Manufacture =", 17, {0}), " 1990");
    EXPECT_EQ(shown_value("Year of Manufacture =", 17, {16}), " 2006");
    EXPECT_EQ(shown_value("Year of Manufacture =", 17, {255}), " 2245");
}

TEST(edid_version, has_a_character_for_each_byte) {
    // 128 is the Euro, 129 has no character in the set, from 256 on they are above the set
    const std::vector<std::pair<int, std::string>> characters = {
        {0, "0"}, {10, ":"}, {78, "~"}, {80, "\xE2\x82\xAC"}, {81, "\xC2\x81"}, {207, "\xC3\xBF"}, {208, "\xC4\x80"}};
    for (const auto& [byte, character] : characters) {
        EXPECT_EQ(shown_value("EDID Version = ", 18, {byte, 3}), character + ".3") << byte;
        EXPECT_EQ(shown_value("EDID Version = ", 18, {1, byte}), "1." + character) << byte;
    }
}

TEST(analog_input, has_a_line_for_each_of_its_bits) {
    for (int bits = 0; bits < 128; ++bits) {
        const std::string text = vendor_text(edid_of({{20, {bits}}}));
        const auto either = [&](int mask, const char* set, const char* clear) {
            return (bits & mask) != 0 ? set : clear;
        };
        EXPECT_EQ(value_after("Signal Type = ", text), "Analog") << bits;
        const char* const levels[] = {"0.700/0.300", "0.714/0.286", "1.000/0.400", "0.700/0.000"};
        EXPECT_EQ(value_after("Signal Level (Video/Sync)= ", text), levels[bits / 32]) << bits;
        EXPECT_EQ(value_after("Pedestal Setup = ", text), either(0x10, "YES", "NO")) << bits;
        EXPECT_EQ(value_after("Seperate Sync = ", text), either(0x08, "Supported", "Not Supported")) << bits;
        EXPECT_EQ(value_after("Composite Sync = ", text), either(0x04, "Supported", "Not Supported")) << bits;
        EXPECT_EQ(value_after("Sync On Green = ", text), either(0x02, "Supported", "Not Supported")) << bits;
        EXPECT_EQ(value_after("Vs Serration = ", text), either(0x01, "Required", "Not Required")) << bits;
    }
}

TEST(digital_input, shows_bit_0_alone) {
    for (int byte_20 = 128; byte_20 < 256; ++byte_20) {
        const std::string text = vendor_text(edid_of({{20, {byte_20}}}, acr), 305419896);
        const std::string dfp = byte_20 % 2 == 1 ? "DFP 1.x = Compatible" : "DFP 1.x = Not Compatible";
        EXPECT_EQ(text, acr_lines + lines({"Signal Type = Digital", dfp})) << byte_20;
    }
}

} // namespace
} // namespace desk
