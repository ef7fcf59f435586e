#include "translate/decode/vsdb.h"

#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "translate/decode/data_block.h"
#include "translate/decode/text_output.h"

namespace desk {

namespace {

constexpr std::string_view present(bool flag) { return flag ? "Present" : "Not Present"; }

bool is_hdmi(const data_block& block) { return block.byte(1) == 3 && block.byte(2) == 12 && block.byte(3) == 0; }

void print_payload(std::string& text, const data_block& block) {
    constexpr int bytes_of_row = 5;
    const int length = block.length();
    const auto too_short = [&] { return "a block of length " + number_text(length) + " has no payload to list"; };
    // Intended: both numbers are bytes, so a block without a payload overflows one of them.
    const int m = telling(too_short, [&] { return to_byte(length - 3); });
    print_line(text, "Payload =");
    const int rows = (m + bytes_of_row - 1) / bytes_of_row;
    const int last_row = telling(too_short, [&] { return to_byte(rows - 1); });
    for (int row = 0; row <= last_row; ++row) {
        for (int i = row * bytes_of_row; i < m && i < (row + 1) * bytes_of_row; ++i)
            print(text, hex2(block.byte(4 + i)), " ");
        print_line(text);
    }
}

void print_physical_address(std::string& text, const data_block& block) {
    print(text, "CEC Physical Address A.B.C.D =", line_end, "   ");
    const std::uint8_t ab = block.byte(4);
    print(text, str(ab >> 4), " .", str(ab & 15), " .");
    const std::uint8_t cd = block.byte(5);
    print_line(text, str(cd >> 4), " .", str(cd & 15));
}

void print_deep_color(std::string& text, std::uint8_t byte) {
    print(text, "Deep Color(bit) = ");
    if (bit(byte, 6)) print(text, "48/");
    if (bit(byte, 5)) print(text, "36/");
    if (bit(byte, 4)) print(text, "30");
    if ((byte & 0x70) == 0) print(text, "Not Supported");
    print_line(text);
}

void print_support(std::string& text, const data_block& block) {
    print(text, "Supports_AI = ");
    const std::uint8_t byte = block.byte(6);
    print_line(text, supported(bit(byte, 7)));
    print_deep_color(text, byte);
    print_line(text, "YCbCr444 Deep Color = ", supported(bit(byte, 3)));
    print_line(text, "DVI Dual Link = ", supported(bit(byte, 0)));
}

void print_latency(std::string& text, const data_block& block) {
    print(text, "Latency Fields = ");
    const std::uint8_t byte = block.byte(8);
    print_line(text, present(bit(byte, 7)));
    print_line(text, "Interlaced Latency Fields = ", present(bit(byte, 6)));
}

void print_hdmi_fields(std::string& text, const data_block& block) {
    const int length = block.length();
    if (length >= 5) print_physical_address(text, block);
    if (length >= 6) print_support(text, block);
    if (length >= 7) {
        print(text, "Max TMDS Clock =");
        print_line(text, str(block.byte(7) * 5), " MHz");
    }
    if (length >= 8) print_latency(text, block);
}

} // namespace

void decode_vsdb(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    if (address == 0) return print(text, "No Vendor Specific Data Block");
    decode_data_block("vendor specific", trans_buff, address, [&](const data_block& block) {
        print_line(text, "VSDB block size =", str(block.length()));
        print(text, "IEEE Registration Id = 0x");
        for (const int n : {3, 2, 1})
            print(text, hex2(block.byte(n)));
        print_line(text);
        is_hdmi(block) ? print_hdmi_fields(text, block) : print_payload(text, block);
    });
}

} // namespace desk
