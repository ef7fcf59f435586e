#pragma once

#include <cstdint>

namespace desk {

/// Conversions to the desk's integer types: rounded to nearest, ties to even. Each throws failure::overflow if the
/// rounded value does not fit.
std::uint8_t to_byte(double value);
std::int16_t to_integer(double value);
std::int32_t to_long(double value);

/// Checked division: throws failure::division_by_zero, or failure::overflow for 0 / 0.
double divide(double dividend, double divisor);

} // namespace desk
