#pragma once

class QWidget;

namespace desk::qt {

/// How large the window around `w` draws its plan: 1 is 15 twips to a logical pixel. Also 1 for message boxes, file
/// dialogs and widgets of no window.
double plan_scale(const QWidget* w);

/// Sets the scale for everything in `window`.
void set_plan_scale(QWidget& window, double scale);

} // namespace desk::qt
