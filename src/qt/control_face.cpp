#include "qt/control_face.h"

#include "controls/window.h"
#include "qt/look.h"

#include <QEvent>
#include <QPalette>

namespace desk::qt {

control_face::control_face(control& model, QWidget* w, event_gate& gate) : model_(model), widget_(w), gate_(gate) {
    QString name = QString::fromStdString(model.name);
    if (model.index >= 0) name += "_" + QString::number(model.index);
    widget_->setObjectName(name);
    widget_->installEventFilter(this);
}

void control_face::follow() {
    following_ = true;
    const QRect place(pixels(model_.left), pixels(model_.top), pixels(model_.width), pixels(model_.height));
    if (widget_->geometry() != place) widget_->setGeometry(place);
    follow_kind();
    if (widget_->isEnabledTo(widget_->parentWidget()) != model_.enabled) widget_->setEnabled(model_.enabled);
    if (widget_->isVisibleTo(widget_->parentWidget()) != model_.visible) widget_->setVisible(model_.visible);
    following_ = false;
}

bool control_face::eventFilter(QObject* watched, QEvent* e) {
    if (watched == widget_ && e->type() == QEvent::FocusIn && !following_ && !model_.has_focus())
        gate_.run([this] { model_.set_focus(); });
    return take_event(e) || QObject::eventFilter(watched, e);
}

void control_face::set_accessible(const std::string& caption) {
    const QString name = QString::fromStdString(caption).simplified();
    if (widget_->accessibleName() != name) widget_->setAccessibleName(name);
}

void control_face::set_back(QWidget* w, QPalette::ColorRole role, color c) {
    const QColor back = color_of(c);
    if (w->palette().color(QPalette::Active, role) == back && w->palette().color(QPalette::Disabled, role) == back)
        return;
    QPalette palette = w->palette();
    palette.setColor(role, back);
    w->setPalette(palette);
}

} // namespace desk::qt
