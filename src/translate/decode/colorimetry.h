#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends the line of the colorimetry data block at an address (CEA-861-D, section 7.5.5), without its line end;
/// address 0: there is none. Throws failure::subscript_out_of_range.
void decode_colorimetry(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
