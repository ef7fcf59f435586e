#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// What decode_descriptor prints. The classes of descriptors have the same numbers.
namespace descriptor_code {

inline constexpr std::uint8_t serial_number = 0xFF;
inline constexpr std::uint8_t ascii_string = 0xFE;
inline constexpr std::uint8_t range_limits = 0xFD;
inline constexpr std::uint8_t monitor_name = 0xFC;
inline constexpr std::uint8_t standard_timings_9_to_11 = 0xE1;
inline constexpr std::uint8_t standard_timings_12_to_14 = 0xE2;
inline constexpr std::uint8_t unknown = 0xE3;

} // namespace descriptor_code

/// Appends the content of a monitor descriptor of block 0 (VESA E-EDID, section 3.10.3). `address` is that of its tag,
/// the fourth byte, which is not compared with the code. An unknown code appends nothing.
/// Intended: the standard timings are read two bytes early, so "Standard Timing 9" is the tag and the byte after it,
/// and the descriptor's sixth pair is not shown.
void decode_descriptor(std::string& text, const edid_buffer& trans_buff, std::uint8_t address, std::uint8_t code);

} // namespace desk
