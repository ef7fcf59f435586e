#pragma once

#include <cstdint>

namespace desk::facts {

/// What a formula makes of a resolution and a rate.
struct formula_timing {
    std::uint32_t h_total = 0;
    std::uint32_t v_total = 0;
    double pixel_clock_khz = 0;

    double h_khz() const { return h_total == 0 ? 0 : pixel_clock_khz / h_total; }
    double refresh_hz() const { return v_total == 0 ? 0 : h_khz() * 1000 / v_total; }
};

/// VESA GTF 1.1 with its default curve, without margins, progressive.
formula_timing gtf_timing(std::uint32_t width, std::uint32_t height, double rate_hz);

enum class blanking : std::uint8_t { normal, reduced, reduced_2 };

/// VESA CVT 1.2 without margins, progressive.
formula_timing cvt_timing(std::uint32_t width, std::uint32_t height, double rate_hz, blanking kind);

} // namespace desk::facts
