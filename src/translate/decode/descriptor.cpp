#include "translate/decode/descriptor.h"

#include "runtime/numbers.h"
#include "runtime/subscript.h"
#include "translate/decode/standard.h"
#include "translate/decode/tag.h"
#include "translate/decode/text_output.h"

namespace desk {

namespace {

void print_text_field(std::string& text, const edid_buffer& trans_buff, std::uint8_t address, std::string_view label) {
    constexpr int longest = 13;
    constexpr std::uint8_t line_feed = 0x0A;
    print(text, label);
    for (int i = 0; i < longest; ++i) {
        const std::uint8_t byte = element(trans_buff, address + 2 + i);
        if (byte == line_feed) break;
        print_character(text, byte);
    }
}

void print_range_limits(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    const auto byte = [&](int offset) -> int { return element(trans_buff, address + offset); };
    print_line(text, "--- Monitor Range Limits ---");
    print(text, "Min Vertical Rate =", str(byte(2)), " Hz", line_end);
    print(text, "Max Vertical Rate =", str(byte(3)), " Hz", line_end, line_end);
    print(text, "Min Horizontal Rate =", str(byte(4)), " KHz", line_end);
    print(text, "Max Horizontal Rate =", str(byte(5)), " KHz", line_end, line_end);
    print(text, "Max Pixel Clock Rate =", str(byte(6) * 10), " MHz", line_end);
    const int formula = byte(7);
    print(text, "2nd Timing Formula = ",
          formula == 0   ? "Not supported"
          : formula == 2 ? "2nd GTF curve supported"
                         : "?");
}

void print_unknown(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    print_line(text, "Unknown detail-timing or monitor descriptor.");
    print_tag(text, trans_buff, address);
}

} // namespace

void decode_descriptor(std::string& text, const edid_buffer& trans_buff, std::uint8_t address, std::uint8_t code) {
    switch (code) {
    case descriptor_code::serial_number:
        return print_text_field(text, trans_buff, address, "Monitor Serial Number = ");
    case descriptor_code::ascii_string:
        return print_text_field(text, trans_buff, address, "Monitor ASCII String = ");
    case descriptor_code::range_limits:
        return print_range_limits(text, trans_buff, address);
    case descriptor_code::monitor_name:
        return print_text_field(text, trans_buff, address, "Monitor Name = ");
    case descriptor_code::standard_timings_9_to_11:
        return print_standard_timings(text, trans_buff, 9, 3, address);
    case descriptor_code::standard_timings_12_to_14:
        return print_standard_timings(text, trans_buff, 12, 3, to_byte(address + 6));
    case descriptor_code::unknown:
        return print_unknown(text, trans_buff, address);
    default:
        return;
    }
}

} // namespace desk
