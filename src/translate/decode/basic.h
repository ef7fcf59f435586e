#pragma once

#include "edid/format/buffer.h"

#include <string>

namespace desk {

/// Appends the lines of bytes 21 to 24: size, gamma and features (VESA E-EDID, sections 3.6.2 to 3.6.4).
/// Intended: a gamma byte above 155 throws failure::overflow, even 255, which means a gamma stored elsewhere.
void decode_basic(std::string& text, const edid_buffer& trans_buff);

} // namespace desk
