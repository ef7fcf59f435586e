#pragma once

#include "edid/format/buffer.h"

#include <string>

namespace desk {

/// Whether bytes 0 to 7 are the header of a VESA basic block (VESA E-EDID, section 3.3).
bool is_vesa_basic_block(const edid_buffer& trans_buff);

/// Appends "Header = " and bytes 0 to 7, each followed by a space.
void print_header(std::string& text, const edid_buffer& trans_buff);

} // namespace desk
