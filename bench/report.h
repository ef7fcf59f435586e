#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace desk::bench {

inline double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// Prints a figure beside its bound.
inline void report(const char* what, double value, const char* unit, double bound) {
    std::printf("%-58s %9.2f %-3s (bound %g)%s\n", what, value, unit, bound, value <= bound ? "" : "  ABOVE");
    std::fflush(stdout);
}

} // namespace desk::bench
