#include "qt/plan_scale.h"

#include <QComboBox>
#include <QVariant>
#include <QWidget>

namespace desk::qt {

namespace {

constexpr const char* property = "plan_scale";

} // namespace

double plan_scale(const QWidget* w) {
    while (w != nullptr) {
        const QWidget* const window = w->window();
        if (const QVariant scale = window->property(property); scale.isValid()) return scale.toDouble();
        // a combo box's list is a separate window
        w = qobject_cast<const QComboBox*>(window->parentWidget());
    }
    return 1;
}

void set_plan_scale(QWidget& window, double scale) { window.setProperty(property, scale); }

} // namespace desk::qt
