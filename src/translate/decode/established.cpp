#include "translate/decode/established.h"

#include "translate/decode/text_output.h"

namespace desk {

bool is_established(const established_timing& timing, const edid_buffer& trans_buff) {
    return bit(trans_buff.at(timing.byte), timing.bit);
}

void decode_established(std::string& text) {
    print(text, established_1_heading);
    print_line_ends(text, 11);
    print(text, established_2_heading);
    print_line_ends(text, 10);
    print(text, line_end, manufacturer_heading, line_end);
}

} // namespace desk
