#pragma once

#include "edid/format/buffer.h"

#include <cstddef>
#include <string>

namespace desk {

/// Appends the 128 bytes of block 0 or 1: eight to a line, followed by "//" and the address of the last one.
void print_binary_list(std::string& text, const edid_buffer& trans_buff, std::size_t block);

} // namespace desk
