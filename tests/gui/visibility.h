#pragma once

#include "ui_driver.h"

#include <QString>
#include <QStringList>

namespace desk::gui {

/// Whether a control over a text box covers any non-space character.
bool covers_text(const ui_driver& ui, const QString& box, const QString& over);

/// Whether exactly one line of a label is drawn level with a control beside it or over it.
bool has_title_beside(const ui_driver& ui, const QString& label, const QString& control);

/// The controls whose captions are too wide for them.
QStringList clipped_captions(const QWidget& window);

} // namespace desk::gui
