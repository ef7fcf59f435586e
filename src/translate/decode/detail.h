#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// Appends the lines of a detailed timing (VESA E-EDID, section 3.10.2), the last one without its line end.
/// `position` counts from 1 and is decremented; the first descriptor is at `descriptor_start`.
/// Intended: a pixel clock of 327.68 MHz or more throws failure::overflow.
void decode_detail(std::string& text, const edid_buffer& trans_buff, std::uint8_t descriptor_start,
                   std::uint8_t& position);

} // namespace desk
