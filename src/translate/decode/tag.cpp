#include "translate/decode/tag.h"

#include "runtime/subscript.h"
#include "translate/decode/text_output.h"

namespace desk {

void print_tag(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    print_line(text, "Tag address = 0x", hex2(address));
    print(text, "Tag data = 0x", hex2(element(trans_buff, address)));
}

} // namespace desk
