#pragma once

#include "edid/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends the lines of the vendor specific data block at an address: the HDMI fields as far as the block reaches
/// (HDMI 1.3a, section 8.3.2), any other vendor's as a dump; address 0: there is none.
/// Throws failure::subscript_out_of_range where the block runs beyond byte 255.
/// The desk behaves so: a block of another vendor that is not longer than its identifier throws failure::overflow.
void decode_vsdb(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
