#pragma once

#include "edid/facts/block_reader.h"

#include <cstddef>

namespace desk::facts {

/// Reads the four descriptors of 18 bytes of the base block.
void read_descriptors(const block_reader& block);

/// Whether 18 bytes are a display descriptor of a known kind.
bool is_display_descriptor(const block_reader& block, std::size_t offset);
void read_display_descriptor(const block_reader& block, std::size_t offset);

} // namespace desk::facts
