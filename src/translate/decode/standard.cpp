#include "translate/decode/standard.h"

#include "runtime/numbers.h"
#include "runtime/subscript.h"
#include "translate/decode/text_output.h"

#include <array>

namespace desk {

namespace {

struct aspect_ratio {
    int width;
    int height;
    std::string_view line;
};

constexpr std::array<aspect_ratio, 4> aspect_ratios = {{
    {16, 10, "Image Aspect Ratio = 16:10"},
    {4, 3, "Image Aspect Ratio = 4:3"},
    {5, 4, "Image Aspect Ratio = 5:4"},
    {16, 9, "Image Aspect Ratio = 16:9"},
}};

} // namespace

void decode_standard(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    const std::uint8_t b0 = element(trans_buff, address);
    const std::uint8_t b1 = element(trans_buff, address + 1);
    const int h = (b0 - 1) * 8 + 256;
    const aspect_ratio& ratio = aspect_ratios.at(b1 >> 6U);
    // not rounded: 1152 pixels of 5:4 have 921.6 lines
    const double v = static_cast<double>(h) * ratio.height / ratio.width;
    print_line(text, "Horizontal Active Pixel =", str(h));
    print_line(text, "Vertical Active Pixel =", str(v));
    print_line(text, ratio.line);
    print(text, "Refresh Rate =", str((b1 & 0x3F) + 60));
}

void print_standard_heading(std::string& text, int number) {
    print_line(text, "--- Standard Timing ", number_text(number), " ---");
}

void print_standard_timings(std::string& text, const edid_buffer& trans_buff, int first_number, int count,
                            std::uint8_t address) {
    for (int i = 0; i < count; ++i) {
        if (i > 0) print(text, line_end, line_end);
        print_standard_heading(text, first_number + i);
        decode_standard(text, trans_buff, to_byte(address + 2 * i));
    }
}

} // namespace desk
