#include "translate/decode/header.h"

#include "translate/decode/text_output.h"

#include <algorithm>

namespace desk {

bool is_vesa_basic_block(const edid_buffer& trans_buff) {
    return std::equal(edid_header.begin(), edid_header.end(), trans_buff.begin());
}

void print_header(std::string& text, const edid_buffer& trans_buff) {
    print(text, "Header = ");
    for (std::size_t i = 0; i < edid_header.size(); ++i)
        print(text, hex2(trans_buff.at(i)), " ");
}

} // namespace desk
