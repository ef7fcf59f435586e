#include "qt/plan_scale.h"

#include <QDialog>
#include <QVariant>
#include <QWidget>

namespace desk::qt {

namespace {

constexpr const char* property = "plan_scale";

} // namespace

double plan_scale(const QWidget* w) {
    // the list of a combo box is a window of its own, and a child of the box
    for (; w != nullptr && qobject_cast<const QDialog*>(w) == nullptr; w = w->parentWidget())
        if (const QVariant scale = w->property(property); scale.isValid()) return scale.toDouble();
    return 1;
}

void set_plan_scale(QWidget& window, double scale) { window.setProperty(property, scale); }

} // namespace desk::qt
