#pragma once

#include "edid/format/buffer.h"

#include <string>

namespace desk {

/// Appends the lines of bytes 8 to 20: vendor and product, and the video input (VESA E-EDID, sections 3.4 to 3.6.1).
/// `sn_value` is the serial number in bytes 12 to 15.
void decode_vendor(std::string& text, const edid_buffer& trans_buff, double sn_value);

} // namespace desk
