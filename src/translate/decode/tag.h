#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends address and value of the tag of an unknown descriptor or data block, without a final line end. Throws
/// failure::subscript_out_of_range.
void print_tag(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

/// Appends what the tree shows for a data block of an unknown kind: a heading and its tag. Throws
/// failure::subscript_out_of_range.
void decode_unknown_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
