#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>

namespace desk::qt {

/// Scales are multiples of 1/16, so that a fixed-pitch line, 16 pixels at 1:1, has a whole number of pixels.
inline constexpr int scale_steps = 16;

/// Position of an edge of the plan in pixels. Edges are rounded down, not sizes: edges that touch at 1:1 touch at
/// every scale.
int edge(int twips, double scale);

/// Size in pixels of a plan in twips.
QSize plan_pixels(QSize plan, double scale);

/// The smallest scale at which body text is legible.
double smallest_scale(double device_pixel_ratio);

/// The largest scale at which a plan in twips fits into `room`, but at least the smallest legible one.
double fitting_scale(QSize plan, QSize room, double device_pixel_ratio);

/// The scale at which a window opens: it fits the available screen with its frame, and does not exceed `largest`.
double first_scale(QSize plan, QSize available, const QMargins& frame, double device_pixel_ratio, double largest = 1);

/// Moves a frame as little as possible into the available area; the title bar of an oversized one stays visible.
QRect moved_into(const QRect& available, QRect frame);

} // namespace desk::qt
