#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>

namespace desk::qt {

/// Scales are whole sixteenths, so that a line of the fixed-pitch font, 16 pixels at 1:1, has a whole number of pixels.
inline constexpr int scale_steps = 16;

/// Where an edge of the plan lies. Edges are rounded down, not sizes: what touches at 1:1 touches at every scale.
int edge(int twips, double scale);

/// The size of a plan given in twips.
QSize plan_pixels(QSize plan, double scale);

/// The smallest scale at which the body text is legible on a screen.
double smallest_scale(double device_pixel_ratio);

/// The largest scale at which a plan in twips fits into `room`, but never one that is too small to be legible.
double fitting_scale(QSize plan, QSize room, double device_pixel_ratio);

/// The same for a window that opens: with its frame it fits into what the screen has available, and it is not larger
/// than `largest`.
double first_scale(QSize plan, QSize available, const QMargins& frame, double device_pixel_ratio, double largest = 1);

/// Moves a frame as little as is needed to lie in the available area; the title bar of one that is too large stays in
/// sight.
QRect moved_into(const QRect& available, QRect frame);

} // namespace desk::qt
