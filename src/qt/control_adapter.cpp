#include "qt/control_adapter.h"

#include "controls/controls.h"
#include "controls/window.h"
#include "qt/accessible_names.h"
#include "qt/help_lines.h"
#include "qt/plan_fit.h"
#include "qt/plan_scale.h"
#include "qt/reading_order.h"

#include <QApplication>
#include <QEvent>
#include <QStringList>

namespace desk::qt {

control_adapter::control_adapter(control& model, QWidget* w, event_gate& gate)
    : model_(model), widget_(w), gate_(gate), tips_(model, *w) {
    QString name = QString::fromStdString(model.name);
    if (model.index >= 0) name += "_" + QString::number(model.index);
    widget_->setObjectName(name);
    accessible_name_ = accessible_name(model);
    // the wheel does not move the focus to the control
    if (widget_->focusPolicy() == Qt::WheelFocus) widget_->setFocusPolicy(Qt::StrongFocus);
    widget_->installEventFilter(this);
}

void control_adapter::act(const std::function<void()>& action) {
    gate_.run([&] {
        const QWidget* const modal = QApplication::activeModalWidget();
        const bool in_reach = modal == nullptr || modal == widget_->window();
        if (in_reach && can_be_reached(model_))
            action();
        else
            follow(); // the widget may have moved by itself
    });
}

QRect control_adapter::place() const {
    int left = 0;
    int top = 0;
    for (const control* around = model_.parent; around != nullptr; around = around->parent) {
        left += around->left;
        top += around->top;
    }
    const QPoint corner(edge(left, scale_), edge(top, scale_));
    left += model_.left;
    top += model_.top;
    const QRect in_window(QPoint(edge(left, scale_), edge(top, scale_)),
                          QPoint(edge(left + model_.width, scale_) - 1, edge(top + model_.height, scale_) - 1));
    return in_window.translated(-corner).marginsAdded(extra_);
}

void control_adapter::follow() {
    following_ = true;
    if (const double now = plan_scale(widget_); scale_ != now) {
        scale_ = now;
        follow_scale();
    }
    if (const QRect now = place(); widget_->geometry() != now) widget_->setGeometry(now);
    follow_kind();
    tips_.follow();
    if (widget_->isEnabledTo(widget_->parentWidget()) != model_.enabled) widget_->setEnabled(model_.enabled);
    if (widget_->isVisibleTo(widget_->parentWidget()) != model_.visible) widget_->setVisible(model_.visible);
    following_ = false;
}

bool control_adapter::eventFilter(QObject* watched, QEvent* e) {
    if (watched == widget_ && e->type() == QEvent::FocusIn && !following_ && !model_.has_focus())
        gate_.run([this] { model_.set_focus(); });
    return handle_event(e) || QObject::eventFilter(watched, e);
}

void control_adapter::set_accessible(const std::string& caption, const QString& state) {
    const QString shown = QString::fromStdString(caption).simplified();
    const QString& name = shown.isEmpty() ? accessible_name_ : shown;
    QStringList more;
    if (!shown.isEmpty() && !accessible_name_.isEmpty()) more << accessible_name_;
    if (!state.isEmpty()) more << state;
    if (more.isEmpty()) more << help_line(model_);
    const QString description = more.join(", ");
    if (widget_->accessibleName() != name) widget_->setAccessibleName(name);
    if (widget_->accessibleDescription() != description) widget_->setAccessibleDescription(description);
}

} // namespace desk::qt
