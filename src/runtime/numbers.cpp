#include "runtime/numbers.h"

#include "runtime/failure.h"
#include "runtime/text.h"

#include <cmath>
#include <limits>

namespace desk {

namespace {

double round_half_even(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest < 0.5) return below;
    if (rest > 0.5) return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <class Target>
Target checked(double value, const char* type) {
    const double rounded = std::isfinite(value) ? round_half_even(value) : value;
    if (!(rounded >= std::numeric_limits<Target>::min() && rounded <= std::numeric_limits<Target>::max()))
        throw runtime_failure(failure::overflow, number_text(value) + " does not fit into " + type);
    return static_cast<Target>(rounded);
}

} // namespace

std::uint8_t to_byte(double value) { return checked<std::uint8_t>(value, "a byte"); }
std::int16_t to_integer(double value) { return checked<std::int16_t>(value, "a 16-bit number"); }
std::int32_t to_long(double value) { return checked<std::int32_t>(value, "a 32-bit number"); }

double divide(double dividend, double divisor) {
    if (divisor == 0) {
        throw runtime_failure(dividend == 0 ? failure::overflow : failure::division_by_zero,
                              number_text(dividend) + " can't be divided by zero");
    }
    return dividend / divisor;
}

} // namespace desk
