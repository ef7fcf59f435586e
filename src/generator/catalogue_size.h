#pragma once

namespace desk {

/// The numbers of timings and patterns in the catalogue of the desk.
inline constexpr int shipped_timing_count = 79;
inline constexpr int shipped_pattern_count = 64;

/// Row numbers have three digits on the line, and 999 is the query.
inline constexpr int largest_catalogue = 998;

} // namespace desk
