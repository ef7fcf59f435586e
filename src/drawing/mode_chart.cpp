#include "drawing/mode_chart.h"

#include "drawing/svg_drawing.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace desk::drawing {

namespace {

constexpr std::array<clock_class, 5> classes = {{
    {85, "clock-1", "to 85 MHz"},
    {165, "clock-2", "to 165 MHz"},
    {340, "clock-3", "to 340 MHz"},
    {600, "clock-4", "to 600 MHz"},
    {0, "clock-5", "above 600 MHz"},
}};

/// Resolutions that the axis names.
struct named_resolution {
    std::uint32_t width;
    std::uint32_t height;
};
constexpr std::array<named_resolution, 8> named = {
    {{320, 240}, {640, 480}, {1024, 768}, {1920, 1080}, {2560, 1440}, {3840, 2160}, {7680, 4320}, {15360, 8640}}};

constexpr double chart_left = 40;
constexpr double chart_right = 510;
constexpr double chart_top = 28;
constexpr double chart_bottom = 240;
constexpr double chart_width = 520;
constexpr double chart_height = 270;

double size_of(std::uint32_t width, std::uint32_t height) { return std::log2(static_cast<double>(width) * height); }

/// From a range of values to a range of places.
struct scale {
    double from;
    double to;
    double place_from;
    double place_to;

    double operator()(double value) const {
        return place_from + (value - from) / (to - from) * (place_to - place_from);
    }
};

bool is_drawn(const charted_mode& m) { return m.width > 0 && m.height > 0 && m.refresh_hz > 0; }

/// The ends of the axis of rates: whole steps around all rates.
scale scale_of_rates(std::span<const charted_mode> modes, double& step) {
    double lowest = 1e9;
    double highest = 0;
    for (const charted_mode& m : modes) {
        lowest = std::min(lowest, m.refresh_hz);
        highest = std::max(highest, m.refresh_hz);
    }
    constexpr double most_steps = 7;
    constexpr std::array<double, 3> factors = {2, 2.5, 2}; // 10, 20, 50, 100 and so on
    step = 10;
    for (std::size_t i = 0; (highest - lowest) / step > most_steps; ++i)
        step *= factors.at(i % factors.size());
    const double from = std::max(0.0, std::floor((lowest - 2) / step) * step);
    return {from, std::max(std::ceil((highest + 2) / step), from / step + 1) * step, chart_bottom, chart_top};
}

scale scale_of_sizes(std::span<const charted_mode> modes) {
    constexpr double margin = 0.4;
    double smallest = 1e9;
    double largest = 0;
    for (const charted_mode& m : modes) {
        smallest = std::min(smallest, size_of(m.width, m.height));
        largest = std::max(largest, size_of(m.width, m.height));
    }
    return {smallest - margin, largest + margin, chart_left, chart_right};
}

void draw_axes(svg_drawing& drawing, const scale& across, const scale& up, double step) {
    const int steps = static_cast<int>(std::lround((up.to - up.from) / step));
    for (int i = 0; i <= steps; ++i) {
        const double rate = up.from + i * step;
        drawing.line("grid", {chart_left, up(rate)}, {chart_right, up(rate)});
        drawing.text("axis", {chart_left - 6, up(rate) + 4}, anchor::end, number_text(rate, 0));
    }
    drawing.text("axis", {chart_left - 6, chart_top - 14}, anchor::end, "Hz");
    constexpr double room_of_label = 48;
    constexpr double room_of_large_label = 88; // on a narrow page the style draws larger ones and hides the minor ones
    double last_major = -room_of_large_label;
    double last = -room_of_label;
    for (const named_resolution& r : named) {
        const double size = size_of(r.width, r.height);
        if (size < across.from || size > across.to) continue;
        const double x = across(size);
        drawing.line("grid", {x, chart_top}, {x, chart_bottom});
        if (x - last < room_of_label) continue;
        const bool is_major = x - last_major >= room_of_large_label;
        last = x;
        if (is_major) last_major = x;
        const anchor where = x < chart_left + room_of_large_label / 2    ? anchor::start
                             : x > chart_right - room_of_large_label / 2 ? anchor::end
                                                                         : anchor::middle;
        drawing.text(is_major ? "axis" : "axis minor", {x, chart_bottom + 18}, where,
                     std::to_string(r.width) + "\xC3\x97" + std::to_string(r.height));
    }
}

} // namespace

std::span<const clock_class> clock_classes() { return classes; }

const clock_class& clock_class_of(double pixel_clock_mhz) {
    const auto found = std::find_if(classes.begin(), classes.end(), [&](const clock_class& c) {
        return c.up_to_mhz == 0 || pixel_clock_mhz <= c.up_to_mhz;
    });
    return *found;
}

void draw_mode_chart(markup_writer& out, std::span<const charted_mode> modes) {
    std::vector<charted_mode> drawn;
    std::copy_if(modes.begin(), modes.end(), std::back_inserter(drawn), is_drawn);
    if (drawn.empty()) return;
    // the native modes last, on chart_top
    std::stable_partition(drawn.begin(), drawn.end(), [](const charted_mode& m) { return !m.native; });
    double step = 10;
    const scale up = scale_of_rates(drawn, step);
    const scale across = scale_of_sizes(drawn);
    svg_drawing drawing(out, "modes", chart_width, chart_height,
                        "Chart of " + std::to_string(drawn.size()) +
                            " timings: resolution across, refresh rate up, pixel clock by colour. The table of "
                            "timings has the figures.");
    draw_axes(drawing, across, up, step);
    for (const charted_mode& m : drawn) {
        std::string class_name(clock_class_of(m.pixel_clock_mhz).class_name);
        if (m.interlaced) class_name += " hollow";
        const point at = {across(size_of(m.width, m.height)), up(m.refresh_hz)};
        if (m.native) drawing.circle("native-ring", at, 8.5);
        drawing.circle(class_name, at, 5, m.tip);
    }
}

} // namespace desk::drawing
