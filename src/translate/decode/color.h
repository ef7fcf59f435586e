#pragma once

#include "edid/format/buffer.h"

#include <string>

namespace desk {

/// The fraction of a ten-bit chromaticity value, which is scaled in place.
/// Intended: the lowest bit is ignored, so 511/512 is the largest fraction.
float cal_chroma(float& value);

/// Appends the eight lines of bytes 25 to 34 (VESA E-EDID, section 3.7), without a heading.
void decode_color(std::string& text, const edid_buffer& trans_buff);

} // namespace desk
