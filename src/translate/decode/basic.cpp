#include "translate/decode/basic.h"

#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "translate/decode/text_output.h"

#include <array>

namespace desk {

namespace {

constexpr std::array<std::string_view, 4> display_types = {"Mono/GrayScale", "RGB", "Non-RGB Multicolor", "Undefined"};

// Intended: the integer part is rounded, not truncated, and the fraction has no leading zero. 1.70 is printed as 2.70,
// and 2.05 as 2.5.
void print_gamma(std::string& text, std::uint8_t byte_23) {
    print(text, "Gamma Value = ");
    const std::uint8_t g = while_doing([&] { return "Decoding the gamma byte " + number_text(byte_23); },
                                       [&] { return to_byte(byte_23 + 100); });
    print_character(text, to_byte(g / 100.0 + '0'));
    print(text, ".", number_text(g % 100), line_end, line_end);
}

} // namespace

void decode_basic(std::string& text, const edid_buffer& trans_buff) {
    print_line(text, "--- Basic Display Parameters ---");
    print_line(text, "Max Horizontal Size(cm) =", str(trans_buff[21]));
    print_line(text, "Max Vertical Size(cm) =", str(trans_buff[22]));
    print_gamma(text, trans_buff[23]);
    const std::uint8_t features = trans_buff[24];
    print_line(text, "--- Display Features ---");
    print_line(text, "Standby Mode = ", supported(bit(features, 7)));
    print_line(text, "Suspend Mode = ", supported(bit(features, 6)));
    print_line(text, "Active Off Mode = ", supported(bit(features, 5)));
    print_line(text, "Display Type = ", display_types.at((features & 0x18U) >> 3U));
    print_line(text, "Color Space = ", bit(features, 2) ? "Standard" : "Alternate");
    print_line(text, "Preferred Timing = ", bit(features, 1) ? "1st Detail" : "None");
    print(text, "GTF Timing = ", supported(bit(features, 0)));
}

} // namespace desk
