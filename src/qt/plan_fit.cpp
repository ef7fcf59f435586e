#include "qt/plan_fit.h"

#include "qt/appearance.h"

#include <QtMath>

#include <algorithm>

namespace desk::qt {

namespace {

/// Smallest legible height of body text, in screen pixels.
constexpr int legible_pixels = 9;

bool fits(QSize plan, QSize room, int steps) {
    const QSize size = plan_pixels(plan, double(steps) / scale_steps);
    return size.width() <= room.width() && size.height() <= room.height();
}

} // namespace

int edge(int twips, double scale) { return qFloor(twips * scale / twips_per_pixel); }

QSize plan_pixels(QSize plan, double scale) { return {edge(plan.width(), scale), edge(plan.height(), scale)}; }

double smallest_scale(double device_pixel_ratio) {
    int steps = 1;
    while (text_pixels(text_font::sans, double(steps) / scale_steps) * device_pixel_ratio < legible_pixels)
        ++steps;
    return double(steps) / scale_steps;
}

double fitting_scale(QSize plan, QSize room, double device_pixel_ratio) {
    const auto across = static_cast<long long>(room.width()) * twips_per_pixel * scale_steps / plan.width();
    const auto down = static_cast<long long>(room.height()) * twips_per_pixel * scale_steps / plan.height();
    // one above the exact quotient, since fractions of a pixel are dropped
    int steps = static_cast<int>(std::min(across, down)) + 1;
    if (!fits(plan, room, steps)) --steps;
    return std::max(double(steps) / scale_steps, smallest_scale(device_pixel_ratio));
}

double first_scale(QSize plan, QSize available, const QMargins& frame, double device_pixel_ratio, double largest) {
    return std::min(largest, fitting_scale(plan, available.shrunkBy(frame), device_pixel_ratio));
}

QRect moved_into(const QRect& available, QRect frame) {
    frame.moveLeft(std::max(available.left(), std::min(frame.left(), available.right() + 1 - frame.width())));
    frame.moveTop(std::max(available.top(), std::min(frame.top(), available.bottom() + 1 - frame.height())));
    return frame;
}

} // namespace desk::qt
