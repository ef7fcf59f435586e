#pragma once

#include <QColor>

class QPalette;

namespace desk::qt {

/// The desktop's scheme: dark text on light, or light on dark.
enum class scheme { light, dark };

/// The desk's neutral colours by use. All drawing takes its colours from here, except state colours, which the models
/// hold and both schemes share.
struct scheme_colors {
    QColor window;
    QColor surface; ///< frames, lists, text boxes
    QColor raised;  ///< buttons at rest
    QColor hover;
    QColor pressed;
    QColor border;
    QColor strong_border; ///< of interactive and raised elements
    QColor text;
    QColor secondary; ///< titles of columns and groups, icons
    QColor disabled;  ///< disabled text
    QColor accent;    ///< selection and focus
    QColor on_accent;
    QColor readout;    ///< a read-only value
    QColor difference; ///< bytes that differ between two EDIDs
    QColor shadow;     ///< one layer of it
};

const scheme_colors& colors_of(scheme s);
/// The scheme that a palette belongs to.
const scheme_colors& colors_of(const QPalette& p);
scheme scheme_of(const QPalette& p);

/// Qt's own palette.
QPalette palette_of(scheme s);

/// Text and marks on a lit button, in both schemes.
QColor on_lamp();

} // namespace desk::qt
