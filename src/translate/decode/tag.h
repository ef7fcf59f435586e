#pragma once

#include "edid/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends where the tag of an unknown descriptor or data block stands and what it is, without a line end behind it.
/// Throws failure::subscript_out_of_range.
void print_tag(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
