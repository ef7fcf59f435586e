#include "translate/decode/binary_list.h"

#include "runtime/text.h"

namespace desk {

void print_binary_list(std::string& text, const edid_buffer& trans_buff, std::size_t block) {
    const std::size_t first = block * edid_block_size;
    for (std::size_t i = first; i < first + edid_block_size; ++i)
        append_listed_byte(text, trans_buff.at(i), i);
}

} // namespace desk
