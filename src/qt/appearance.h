#pragma once

#include "controls/control.h"
#include "qt/scheme.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <cstddef>
#include <string_view>

class QApplication;

namespace desk::qt {

/// Sets style, colours and fonts of the whole program, the same on every system.
void set_appearance(QApplication& application, scheme s = scheme::light);
/// Switches between light and dark, even with windows open.
void set_scheme(scheme s);

/// The fonts are bundled, so text lies on the same grid everywhere. At every scale a fixed-pitch cell is exactly 8 x
/// 16 plan pixels.
QFont font_of(text_font font, double scale = 1);
/// Font size in pixels; rounded down, so a caption that fits at 1:1 fits at every scale.
int text_pixels(text_font font, double scale = 1);
/// Fixed-pitch cell at 1:1, in pixels.
inline constexpr int cell_width = 8;
inline constexpr int cell_height = 16;

/// Converts a model colour: neutral colours come from the scheme, state colours stay exact.
QColor ink_of(color c, const scheme_colors& s);
QColor background_of(color c, const scheme_colors& s);

/// The contrast ratio of WCAG 2, from 1 to 21.
double contrast(const QColor& a, const QColor& b);
/// The minimum for text.
inline constexpr double readable_contrast = 4.5;

inline constexpr int twips_per_pixel = 15;

/// Converts UTF-8 with CR LF to a QString with single line breaks.
QString shown_text(std::string_view text);
/// Length of that QString in UTF-16 units.
std::size_t shown_length(std::string_view text);

} // namespace desk::qt
