#pragma once

#include "edid/buffer.h"

#include <cstdint>
#include <string>

namespace desk {

/// What decode_descriptor is asked for; the classes of descriptors have the same numbers.
namespace descriptor_code {

inline constexpr std::uint8_t serial_number = 0xFF;
inline constexpr std::uint8_t ascii_string = 0xFE;
inline constexpr std::uint8_t range_limits = 0xFD;
inline constexpr std::uint8_t monitor_name = 0xFC;
inline constexpr std::uint8_t standard_timings_9_to_11 = 0xE1;
inline constexpr std::uint8_t standard_timings_12_to_14 = 0xE2;
inline constexpr std::uint8_t unknown = 0xE3;

} // namespace descriptor_code

/// Appends what a monitor descriptor of block 0 holds (VESA E-EDID, section 3.10.3). `address` is that of its tag, the
/// fourth byte, which is not compared with the code. Any other code appends nothing.
/// The desk behaves so: the standard timings are read two bytes early, so that "Standard Timing 9" is the tag and the
/// byte behind it, and the descriptor's sixth pair does not come up.
void decode_descriptor(std::string& text, const edid_buffer& trans_buff, std::uint8_t address, std::uint8_t code);

} // namespace desk
