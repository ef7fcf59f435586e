#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

namespace desk::gui {

inline const QColor red(255, 0, 0);
inline const QColor green(0, 255, 0);

inline QColor back_of(const QWidget& button) { return button.palette().color(QPalette::Active, QPalette::Button); }

} // namespace desk::gui
