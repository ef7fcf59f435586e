#include "translate/decode/detail.h"

#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "translate/decode/placed_bytes.h"
#include "translate/decode/text_output.h"

#include <array>

namespace desk {

namespace {

/// In units of 10 kHz.
std::int16_t pixel_clock(const placed_bytes& timing) {
    const int c = 256 * timing.byte(1) + timing.byte(0);
    return telling([&] { return "a pixel clock of " + number_text(c / 100.0) + " MHz does not fit"; },
                   [&] { return to_integer(c); });
}

void print_pair(std::string& text, std::string_view label, int horizontal, int vertical) {
    print_line(text, label, str(horizontal), " /", str(vertical));
}

void print_figures(std::string& text, const placed_bytes& timing) {
    const auto byte = [&](int n) -> int { return timing.byte(n); };
    print_pair(text, "H/V Active =", 16 * (byte(4) & 0xF0) + byte(2), 16 * (byte(7) & 0xF0) + byte(5));
    print_pair(text, "H/V Blanking =", 256 * (byte(4) & 0x0F) + byte(3), 256 * (byte(7) & 0x0F) + byte(6));
    print_pair(text, "H/V Sync Offset =", 4 * (byte(11) & 0xC0) + byte(8),
               4 * (byte(11) & 0x0C) + (byte(10) & 0xF0) / 16);
    // Intended: the mask applies to the whole sum, so a vertical width of 16 or more is printed too small.
    print_pair(text, "H/V Sync Width =", 16 * (byte(11) & 0x30) + byte(9), (16 * (byte(11) & 0x03) + byte(10)) & 0x0F);
    print_pair(text, "H/V Image Size(mm) =", 16 * (byte(14) & 0xF0) + byte(12), 256 * (byte(14) & 0x0F) + byte(13));
}

constexpr std::array<std::string_view, 8> stereo_modes = {
    "Normal display no stereo", "Normal display no stereo",   "Field sequence stereo right",
    "2 way int stereo right",   "Field sequence stereo left", "2 way int stereo left",
    "4 way int stereo",         "Side by side stereo",
};

void print_stereo(std::string& text, std::uint8_t f) {
    // Intended: the mask applies to the whole sum, so no stereo mode is ever shown.
    const int s = ((f & 0x60) / 16 + f) & 1;
    print_line(text, "Stereo = ", stereo_modes.at(static_cast<std::size_t>(s)));
}

void print_analog_sync(std::string& text, std::string_view type, std::uint8_t f) {
    print_line(text, "Sync Type = ", type);
    print(text, bit(f, 1) ? "Sync Locate = Sync All" : "Sync Locate = SOG");
    if (bit(f, 2)) print(text, " with Serration");
}

void print_digital_composite_sync(std::string& text, std::uint8_t f) {
    print_line(text, "Sync Type = Digital Composite");
    if (bit(f, 2)) print_line(text, "Sync Locate = with Serration");
    print(text, bit(f, 1) ? "Sync Polarity = Positve" : "Sync Polarity = Negative");
}

void print_digital_separate_sync(std::string& text, std::uint8_t f) {
    print_line(text, "Sync Type = Digital Seperate");
    print(text, bit(f, 1) ? "H/V Sync Polarity = Positve/" : "H/V Sync Polarity = Negative/");
    print(text, bit(f, 2) ? "Positive" : "Negative");
}

void print_sync(std::string& text, std::uint8_t f) {
    switch ((f & 0x18) / 8) {
    case 0:
        return print_analog_sync(text, "Analog Composite", f);
    case 1:
        return print_analog_sync(text, "Bipolar Analog Composite", f);
    case 2:
        return print_digital_composite_sync(text, f);
    default:
        return print_digital_separate_sync(text, f);
    }
}

} // namespace

void decode_detail(std::string& text, const edid_buffer& trans_buff, std::uint8_t descriptor_start,
                   std::uint8_t& position) {
    position = to_byte(position - 1);
    const placed_bytes timing(trans_buff, descriptor_start + position * 18);
    print(text, "Pixel Clock(MHz) = ");
    print_line(text, format_zero(static_cast<float>(pixel_clock(timing) / 100.0)));
    print_figures(text, timing);
    const std::uint8_t f = timing.byte(17);
    print_line(text, "Scanning Mode = ", bit(f, 7) ? "Interlace" : "Non interlace");
    print_stereo(text, f);
    print_sync(text, f);
}

} // namespace desk
