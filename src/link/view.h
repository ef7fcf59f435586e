#pragma once

#include <cstdint>

namespace desk::view {

/// The values of view_mode: the current view, which decides what SET and Download do and how an answer is counted.
inline constexpr std::int16_t timing_select = 0;
inline constexpr std::int16_t pattern_select = 1;
inline constexpr std::int16_t favorite_timing = 2;
inline constexpr std::int16_t favorite_pattern = 3;
inline constexpr std::int16_t edid_read_write = 4;
inline constexpr std::int16_t autorun_config = 5;
inline constexpr std::int16_t panel_control = 6;
inline constexpr std::int16_t none_yet = 254;

} // namespace desk::view
