#pragma once

class QWidget;

namespace desk::qt {

/// Scale of the plan in the window of `w`: 1 is 15 twips per logical pixel. A combo box's list shares it. 1 for
/// message boxes, file dialogs, menus, tooltips and widgets without a window.
double plan_scale(const QWidget* w);

void set_plan_scale(QWidget& window, double scale);

} // namespace desk::qt
