#pragma once

#include "controls/control.h"
#include "qt/event_gate.h"
#include "qt/tool_tips.h"

#include <QMargins>
#include <QObject>
#include <QRect>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>

namespace desk::qt {

/// The widget of one control: shows its model and turns user input into events of the model.
class control_adapter : public QObject {
public:
    control_adapter(control& model, QWidget* w, event_gate& gate);

    /// Updates the widget from its model.
    void follow();

    /// Runs a user action if the control can be reached and is enabled.
    void act(const std::function<void()>& action);

    /// Distances in pixels between the control's edges and its place on the plan, in a window with extra room.
    void set_extra_room(const QMargins& extra) { extra_ = extra; }

    QWidget* widget() const { return widget_; }
    const control& model() const { return model_; }

protected:
    /// Updates what is specific to this kind of control; place, visibility and enabled state are common.
    virtual void follow_kind() = 0;
    /// Adapts fonts and sizes to a new scale, before the control is placed; also called once at first.
    virtual void follow_scale() {}
    double scale() const { return scale_; }
    /// Handles an event of the widget; returns true to consume it.
    virtual bool handle_event(QEvent* e) { return static_cast<void>(e), false; }

    bool eventFilter(QObject* watched, QEvent* e) override;
    /// Sets the accessible name: the caption, plus `state` and other missing details; without a caption, the
    /// control's description.
    void set_accessible(const std::string& caption = "", const QString& state = "");
    bool following() const { return following_; }
    event_gate& gate() { return gate_; }

private:
    QRect place() const;

    control& model_;
    QWidget* widget_;
    event_gate& gate_;
    bool following_ = false;
    double scale_ = 0;
    QMargins extra_;
    QString accessible_name_;
    tool_tips tips_;
};

/// Creates the widget for a control of any visible kind; nullptr for a timer.
std::unique_ptr<control_adapter> make_adapter(control& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
