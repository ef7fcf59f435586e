#pragma once

#include "generator/paced_line.h"

#include <cstdint>

namespace desk::test {

/// Nanoseconds of a millisecond, and of a byte on the line.
inline constexpr std::int64_t ms = 1'000'000;
inline constexpr std::int64_t byte_ns = paced_line::byte_ns;

} // namespace desk::test
