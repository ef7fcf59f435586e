#include "drawing/bar_chart.h"

#include "drawing/svg_drawing.h"

#include <algorithm>

namespace desk::drawing {

namespace {

constexpr double bars_width = 360;

double most_of(std::span<const bar> bars) {
    std::size_t most = 1;
    for (const bar& b : bars)
        most = std::max(most, b.count);
    return static_cast<double>(most);
}

/// The figures, for those who can't see the bars.
std::string words_of(std::span<const bar> bars, std::string_view what) {
    std::string words = std::string(what) + ": ";
    bool first = true;
    for (const bar& b : bars) {
        if (b.count == 0) continue;
        if (!first) words += ", ";
        words += b.label + ": " + std::to_string(b.count);
        first = false;
    }
    return words + ".";
}

} // namespace

void draw_bars(markup_writer& out, std::span<const bar> bars, std::string_view what) {
    constexpr double label_width = 104;
    constexpr double count_width = 60;
    constexpr double row = 24;
    constexpr double thickness = 14;
    if (bars.empty()) return;
    const double most = most_of(bars);
    svg_drawing drawing(out, "bars", bars_width, row * static_cast<double>(bars.size()) + 2, words_of(bars, what));
    double y = 0;
    for (const bar& b : bars) {
        const double length = static_cast<double>(b.count) / most * (bars_width - label_width - count_width);
        drawing.text("axis", {label_width - 8, y + 16}, anchor::end, b.label);
        drawing.rectangle(b.class_name, label_width, y + (row - thickness) / 2, std::max(length, 1.0), thickness, 2);
        drawing.text("axis", {label_width + length + 6, y + 16}, anchor::start, std::to_string(b.count));
        y += row;
    }
}

void draw_columns(markup_writer& out, std::span<const bar> bars, std::string_view what) {
    constexpr double height = 150;
    constexpr double head = 18;
    constexpr double foot = 22;
    constexpr double room_of_label = 40;
    if (bars.empty()) return;
    const double most = most_of(bars);
    constexpr double inside = bars_width - room_of_label; // the labels of the outer columns reach beyond them
    const double pitch = std::min(inside / static_cast<double>(bars.size()), 60.0);
    const double gap = std::min(2.0, pitch / 4);
    const std::size_t every = static_cast<std::size_t>(room_of_label / pitch) + 1;
    svg_drawing drawing(out, "bars", bars_width, head + height + foot, words_of(bars, what));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const double x = room_of_label / 2 + pitch * static_cast<double>(i);
        const double size = static_cast<double>(bars[i].count) / most * height;
        const double center = x + pitch / 2;
        if (bars[i].count > 0)
            drawing.rectangle(bars[i].class_name, x + gap / 2, head + height - size, pitch - gap, size);
        if (i % every == 0) drawing.text("axis", {center, head + height + 16}, anchor::middle, bars[i].label);
        if (static_cast<double>(bars[i].count) == most)
            drawing.text("axis", {center, head + height - size - 5}, anchor::middle, std::to_string(bars[i].count));
    }
    drawing.line("grid", {0, head + height}, {bars_width, head + height});
}

} // namespace desk::drawing
