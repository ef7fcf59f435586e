#pragma once

#include "edid/format/buffer.h"

namespace desk {

/// The serial number in bytes 12 (lowest) to 15 of block 0 (VESA E-EDID, section 3.4.3): 0 to 4294967295.
inline double serial_number_of(const edid_buffer& edid) {
    return edid[15] * 16777216.0 + edid[14] * 65536.0 + edid[13] * 256.0 + edid[12];
}

} // namespace desk
