#pragma once

#include "generator/paced_line.h"

namespace desk::test {

/// The time of a byte on the line.
inline constexpr paced_line::time byte_time = paced_line::byte_time;

} // namespace desk::test
