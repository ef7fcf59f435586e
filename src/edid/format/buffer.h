#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace desk {

inline constexpr std::size_t edid_block_size = 128;
inline constexpr std::size_t edid_size = 256;

/// The first bytes of a VESA basic block (VESA E-EDID, section 3.3).
inline constexpr std::array<std::uint8_t, 8> edid_header = {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};

/// An EDID as raw bytes: block 0 in bytes 0 to 127, block 1 in bytes 128 to 255. The desk supports no third block.
using edid_buffer = std::array<std::uint8_t, edid_size>;

} // namespace desk
