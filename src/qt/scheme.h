#pragma once

#include <QColor>

class QPalette;

namespace desk::qt {

/// Of the desktop: dark text on light ground, or the other way round.
enum class scheme { light, dark };

/// The neutral colours of the desk by what they are for. Everything that is drawn takes its colours from here; colours
/// that show a state are the models' and the same in both schemes.
struct scheme_colors {
    QColor window;
    QColor surface; ///< frames, lists, text boxes
    QColor raised;  ///< buttons at rest
    QColor hover;
    QColor pressed;
    QColor border;
    QColor strong_border; ///< of what can be operated, and of what lies above the rest
    QColor text;
    QColor secondary; ///< titles of columns and groups, signs
    QColor disabled;  ///< text of what is disabled
    QColor accent;    ///< the selection and the focus
    QColor on_accent;
    QColor readout;    ///< a value that can't be edited
    QColor difference; ///< bytes that differ between two EDIDs
    QColor shadow;     ///< one layer of it
};

const scheme_colors& colors_of(scheme s);
/// Of the scheme that a palette belongs to.
const scheme_colors& colors_of(const QPalette& p);
scheme scheme_of(const QPalette& p);

/// What the toolkit itself draws with.
QPalette palette_of(scheme s);

/// Text and marks on the colour of a lit button, in both schemes.
QColor on_lamp();

} // namespace desk::qt
