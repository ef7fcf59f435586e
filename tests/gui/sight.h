#pragma once

#include "hand.h"

#include <QString>
#include <QStringList>

namespace desk::gui {

/// Whether a control over a text box covers any character of it that is not a space.
bool covers_text(const hand& h, const QString& box, const QString& over);

/// Whether a line of a label's text is drawn at the height of a control beside it or over it, and nothing of the lines
/// before and after it.
bool has_title_beside(const hand& h, const QString& label, const QString& control);

/// The controls in a window whose caption is wider than they are.
QStringList cut_captions(const QWidget& window);

} // namespace desk::gui
