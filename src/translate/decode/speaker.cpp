#include "translate/decode/speaker.h"

#include "translate/decode/data_block.h"
#include "translate/decode/text_output.h"

namespace desk {

void print_floor_plan(std::string& text) {
    print(text, "     FL   FLC   FC   FRC   FR");
    print_line_ends(text, 4);
    print(text, "                                LFE");
    print_line_ends(text, 5);
    print(text, "     RL   RLC   RC   RRC   RR");
    print_line_ends(text, 3);
}

std::uint8_t print_speaker_allocation(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    print_line(text, "Speaker Allocation =");
    print(text, " ");
    const std::uint8_t byte = decode_data_block("speaker allocation", trans_buff, address,
                                                [](const data_block& block) { return block.byte(1); });
    const std::uint8_t s = byte & 127;
    for (std::size_t i = 0; i < speaker_positions.size(); ++i)
        if (bit(s, static_cast<int>(i))) print(text, speaker_positions.at(i));
    return s;
}

std::uint8_t decode_speaker_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    if (address == 0) {
        print(text, "No Speaker Allocation Data Block");
        return 0;
    }
    print_floor_plan(text);
    return print_speaker_allocation(text, trans_buff, address);
}

} // namespace desk
