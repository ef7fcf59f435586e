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

/// Style, colours and fonts of the whole program, the same on every system.
void set_look(QApplication& application, scheme s = scheme::light);
/// Light or dark, also while windows are open.
void set_scheme(scheme s);

/// The fonts are bundled, so that texts stand on the same grid everywhere. At every scale a cell of the fixed-pitch
/// font has exactly its share of 8 x 16 pixels.
QFont font_of(text_font font, double scale = 1);
/// The pixel size of a font; rounded down, so that a caption that fits at 1:1 fits at every scale.
int text_pixels(text_font font, double scale = 1);
/// The cell of the fixed-pitch font at 1:1, in pixels.
inline constexpr int cell_width = 8;
inline constexpr int cell_height = 16;

/// A colour of the models as it is drawn. The neutral ones are the scheme's; those that tell a state are exact.
QColor ink_of(color c, const scheme_colors& s);
QColor ground_of(color c, const scheme_colors& s);

/// How far two colours stand apart, from 1 to 21: the contrast ratio of WCAG 2.
double contrast(const QColor& a, const QColor& b);
/// What text needs to be read.
inline constexpr double readable_contrast = 4.5;

inline constexpr int twips_per_pixel = 15;

/// UTF-8 text with CR LF as the toolkit's text with single line breaks.
QString shown_text(std::string_view text);
/// The UTF-16 units of that.
std::size_t shown_length(std::string_view text);

} // namespace desk::qt
