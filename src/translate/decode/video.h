#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends the short video descriptors of the video data block at an address, a line each (CEA-861-D, section 7.5.1);
/// address 0: there is none. Throws failure::subscript_out_of_range if the block extends beyond byte 255.
/// Intended: a video identification code of 100 or more throws failure::invalid_procedure_call.
void decode_video_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
