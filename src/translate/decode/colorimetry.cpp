#include "translate/decode/colorimetry.h"

#include "translate/decode/data_block.h"
#include "translate/decode/text_output.h"

namespace desk {

void decode_colorimetry(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    if (address == 0) return print(text, "No Colorimetry Data Block");
    print(text, "Colorimetry Support=");
    const std::uint8_t byte =
        decode_data_block("colorimetry", trans_buff, address, [](const data_block& block) { return block.byte(2); });
    if (bit(byte, 0)) print(text, "xvYCC601");
    if (bit(byte, 1)) print(text, "/xvYCC709");
}

} // namespace desk
