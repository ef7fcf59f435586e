#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends the short audio descriptors of the audio data block at an address (CEA-861-D, section 7.5.2); address 0:
/// there is none. Throws failure::subscript_out_of_range if the block extends beyond byte 255.
void decode_audio_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
