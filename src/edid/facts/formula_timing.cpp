#include "edid/facts/formula_timing.h"

#include <algorithm>
#include <cmath>

namespace desk::facts {

namespace {

// names and figures of the formulas, in pixels, lines and microseconds
constexpr double cell = 8;
constexpr double min_vsync_and_back_porch_us = 550;
constexpr double reduced_v_blank_us = 460;
constexpr double c_prime = 30;
constexpr double m_prime = 300;
constexpr double min_duty = 20;

std::uint32_t whole(double value) { return value > 0 ? static_cast<std::uint32_t>(value) : 0; }

/// The lines of the vertical sync, by which CVT marks the aspect ratio.
double cvt_v_sync(double width, double height) {
    struct mark {
        double across, down, lines;
    };
    for (const mark& m : {mark{4, 3, 4}, {16, 9, 5}, {16, 10, 6}, {5, 4, 7}, {15, 9, 7}})
        if (std::floor(height * m.across / m.down / cell) * cell == width) return m.lines;
    return 10;
}

formula_timing cvt_normal(double width, double height, double rate_hz) {
    constexpr double front_porch = 3;
    constexpr double back_porch = 6;
    const double line_us = (1e6 / rate_hz - min_vsync_and_back_porch_us) / (height + front_porch);
    if (line_us <= 0) return {};
    const double sync_and_back =
        std::max(std::floor(min_vsync_and_back_porch_us / line_us) + 1, cvt_v_sync(width, height) + back_porch);
    const double duty = std::max(c_prime - m_prime * line_us / 1000, min_duty);
    const double blank = std::floor(width * duty / (100 - duty) / (2 * cell)) * 2 * cell;
    const double total = width + blank;
    return {whole(total), whole(height + sync_and_back + front_porch), std::floor(total / line_us / 0.25) * 250};
}

formula_timing cvt_reduced(double width, double height, double rate_hz, bool version_2) {
    const double line_us = (1e6 / rate_hz - reduced_v_blank_us) / height;
    if (line_us <= 0) return {};
    const double least_blank = version_2 ? 1 + 8 + 6 : 3 + cvt_v_sync(width, height) + 6;
    const double blank = std::max(std::floor(reduced_v_blank_us / line_us) + 1, least_blank);
    const double total = width + (version_2 ? 80 : 160);
    const double step_khz = version_2 ? 1 : 250;
    const double khz = rate_hz * (height + blank) * total / 1000;
    return {whole(total), whole(height + blank), std::floor(khz / step_khz) * step_khz};
}

} // namespace

formula_timing gtf_timing(std::uint32_t width, std::uint32_t height, double rate_hz) {
    constexpr double front_porch = 1;
    const double active = std::round(width / cell) * cell;
    const double estimate_us = (1e6 / rate_hz - min_vsync_and_back_porch_us) / (height + front_porch);
    if (estimate_us <= 0 || active <= 0) return {};
    const double lines = height + std::round(min_vsync_and_back_porch_us / estimate_us) + front_porch;
    const double line_us = 1e6 / rate_hz / lines;
    const double duty = c_prime - m_prime * line_us / 1000;
    const double blank = std::round(active * duty / (100 - duty) / (2 * cell)) * 2 * cell;
    return {whole(active + blank), whole(lines), (active + blank) / line_us * 1000};
}

formula_timing cvt_timing(std::uint32_t width, std::uint32_t height, double rate_hz, blanking kind) {
    if (width == 0 || height == 0 || rate_hz <= 0) return {};
    if (kind == blanking::reduced_2) return cvt_reduced(width, height, rate_hz, true);
    const double cells = std::floor(width / cell) * cell;
    if (kind == blanking::reduced) return cvt_reduced(cells, height, rate_hz, false);
    return cvt_normal(cells, height, rate_hz);
}

} // namespace desk::facts
