#pragma once

#include "edid/facts/block_reader.h"

namespace desk::facts {

/// Reads the four descriptors of 18 bytes of the base block.
void read_descriptors(const block_reader& block);

} // namespace desk::facts
