#pragma once

#include <cstdint>

namespace desk {

/// Assignments of a floating value to the desk's integer types: rounded to nearest, ties to even.
/// Each throws failure::overflow where the rounded value does not fit.
std::uint8_t to_byte(double value);
std::int16_t to_integer(double value);
std::int32_t to_long(double value);

/// Division that fails: by zero with failure::division_by_zero, 0 / 0 with failure::overflow.
double divide(double dividend, double divisor);

} // namespace desk
