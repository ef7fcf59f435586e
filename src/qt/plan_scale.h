#pragma once

class QWidget;

namespace desk::qt {

/// How large the window around `w` draws its plan: 1 is 15 twips to a logical pixel. The list of a combo box belongs to
/// the plan. Also 1 for message boxes, file dialogs, menus, tooltips and widgets of no window.
double plan_scale(const QWidget* w);

/// Sets the scale for everything in `window`.
void set_plan_scale(QWidget& window, double scale);

} // namespace desk::qt
