#include "translate/decode/color.h"

#include "runtime/numbers.h"
#include "translate/decode/text_output.h"

#include <cmath>

namespace desk {

namespace {

// Every label ends with the zero that the number's text lacks before its point.
// Intended: a coordinate of 0 has no point and is printed as "00".
void print_coordinate(std::string& text, std::string_view label, double v) {
    auto value = static_cast<float>(v);
    const float r = cal_chroma(value);
    print_line(text, label, trim(str(val(format_zero(r)))));
}

} // namespace

float cal_chroma(float& value) {
    value = static_cast<float>(value * std::pow(2.0, 5));
    float sum = 0;
    for (int i = 1; i <= 9; ++i) {
        value = value * 2;
        if ((to_long(value) & 0x8000) != 0) sum = static_cast<float>(sum + 1 / std::pow(2.0, i));
    }
    return sum;
}

void decode_color(std::string& text, const edid_buffer& trans_buff) {
    // the unmasked bits of the first value of each byte are a fraction below the significant bits
    const std::uint8_t rg = trans_buff[25];
    const std::uint8_t bw = trans_buff[26];
    print_coordinate(text, "Red x = 0", rg / 64.0 + 4 * trans_buff[27]);
    print_coordinate(text, "Red y = 0", ((rg & 0x30) >> 4) + 4 * trans_buff[28]);
    print_coordinate(text, "Green x = 0", ((rg & 0x0C) >> 2) + 4 * trans_buff[29]);
    print_coordinate(text, "Green y = 0", (rg & 0x03) + 4 * trans_buff[30]);
    print_coordinate(text, "Blue x = 0", bw / 64.0 + 4 * trans_buff[31]);
    print_coordinate(text, "Blue y = 0", ((bw & 0x30) >> 4) + 4 * trans_buff[32]);
    print_coordinate(text, "White x = 0", ((bw & 0x0C) >> 2) + 4 * trans_buff[33]);
    print_coordinate(text, "White y = 0", (bw & 0x03) + 4 * trans_buff[34]);
}

} // namespace desk
