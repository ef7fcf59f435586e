#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends the lines of the vendor specific data block at an address: for HDMI the fields that the block has
/// (HDMI 1.3a, section 8.3.2), for any other vendor a dump; address 0: there is none. Throws
/// failure::subscript_out_of_range if the block extends beyond byte 255. Intended: another vendor's block with nothing
/// after its identifier throws failure::overflow.
void decode_vsdb(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
