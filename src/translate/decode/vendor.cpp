#include "translate/decode/vendor.h"

#include "translate/decode/text_output.h"

#include <array>

namespace desk {

namespace {

constexpr std::array<std::string_view, 4> signal_levels = {"0.700/0.300", "0.714/0.286", "1.000/0.400", "0.700/0.000"};

void print_manufacturer(std::string& text, std::uint8_t byte_8, std::uint8_t byte_9) {
    constexpr int before_a = 64;
    print(text, "Manufacturer Name = ");
    print_character(text, static_cast<std::uint32_t>((byte_8 & 0x7C) / 4 + before_a));
    print_character(text, static_cast<std::uint32_t>((byte_8 & 3) * 8 + (byte_9 & 0xE0) / 32 + before_a));
    print_character(text, static_cast<std::uint32_t>((byte_9 & 0x1F) + before_a));
    print_line(text);
}

void print_digital_input(std::string& text, std::uint8_t b) {
    print_line(text, "Signal Type = ", "Digital");
    print_line(text, "DFP 1.x = ", bit(b, 0) ? "Compatible" : "Not Compatible");
}

void print_analog_input(std::string& text, std::uint8_t b) {
    print_line(text, "Signal Type = ", "Analog");
    print_line(text, "Signal Level (Video/Sync)= ", signal_levels.at((b & 0x60U) >> 5U));
    print_line(text, "Pedestal Setup = ", bit(b, 4) ? "YES" : "NO");
    print_line(text, "Seperate Sync = ", supported(bit(b, 3)));
    print_line(text, "Composite Sync = ", supported(bit(b, 2)));
    print_line(text, "Sync On Green = ", supported(bit(b, 1)));
    print_line(text, "Vs Serration = ", bit(b, 0) ? "Required" : "Not Required");
}

} // namespace

void decode_vendor(std::string& text, const edid_buffer& trans_buff, double sn_value) {
    print_line(text, "--- Vendor/Product Identification ---");
    print_manufacturer(text, trans_buff[8], trans_buff[9]);
    print_line(text, "Product Code =", str(trans_buff[11] * 256 + trans_buff[10]));
    print_line(text, "Serial Number =", str(sn_value));
    print_line(text, "Week of Manufacture =", str(trans_buff[16]));
    print_line(text, "Year of Manufacture =", str(trans_buff[17] + 1990));
    print(text, "EDID Version = ");
    print_digit(text, trans_buff[18]);
    print(text, ".");
    print_digit(text, trans_buff[19]);
    print(text, line_end, line_end);
    print_line(text, "--- Video Input Definition ---");
    const std::uint8_t b = trans_buff[20];
    b >= 128 ? print_digital_input(text, b) : print_analog_input(text, b);
}

} // namespace desk
