#pragma once

#include "runtime/bytes.h"

namespace desk {

/// The EDID, 256 bytes, of a sink of the simulated generator at power-on: 1 a common HDMI display with a
/// CEA-861 block 1, 2 the generator's own HDMI input, 3 an analogue display with an erased block 1 (all 0xFF).
/// Throws failure::subscript_out_of_range for any other sink.
bytes first_sink_edid(int sink);

} // namespace desk
