#include "translate/decode/video_capability.h"

#include "translate/decode/data_block.h"
#include "translate/decode/text_output.h"

#include <array>

namespace desk {

namespace {

constexpr std::array<std::string_view, 4> scan_texts = {"Not Supported", "Always Overscan", "Always Underscan",
                                                        "Both Over/Underscan"};

std::string_view scan_text(std::uint8_t byte, unsigned lower_bit) { return scan_texts.at(byte >> lower_bit & 3U); }

} // namespace

void decode_video_capability(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    if (address == 0) return print(text, "No Video Capability Data Block");
    print(text, "CE Scan Behavior=");
    const std::uint8_t byte = decode_data_block("video capability", trans_buff, address,
                                                [](const data_block& block) { return block.byte(2); });
    print_line(text, scan_text(byte, 0));
    print_line(text, "IT Scan Behavior=", scan_text(byte, 2));
    print_line(text, "PT Scan Behavior=", scan_text(byte, 4));
    print(text, line_end, "Quantization Range = ", bit(byte, 6) ? "Selectable" : "No Data");
}

} // namespace desk
