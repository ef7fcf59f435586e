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

/// The widget of one control: follows its model and turns the operator's hand into events of the model.
class control_adapter : public QObject {
public:
    control_adapter(control& model, QWidget* w, event_gate& gate);

    /// Brings the widget up to date with its model.
    void follow();

    /// Does what the operator asks of the control, however it is asked for: only where the control can be reached and
    /// used now.
    void act(const std::function<void()>& deed);

    /// Pixels by which the edges lie outside the control's place on the plan, in a window that has more room.
    void set_extra_room(const QMargins& extra) { extra_ = extra; }

    QWidget* widget() const { return widget_; }
    const control& model() const { return model_; }

protected:
    /// What the kind of control adds to place, visibility and enabling.
    virtual void follow_kind() = 0;
    /// Fonts and measures of its own at another scale. Called before the control takes its place, and once at first.
    virtual void follow_scale() {}
    /// The scale of the plan that the control lies on.
    double scale() const { return scale_; }
    /// An event of the widget; true: it goes no further.
    virtual bool take_event(QEvent* e) { return static_cast<void>(e), false; }

    bool eventFilter(QObject* watched, QEvent* e) override;
    /// Gives the widget its name for those who do not see it: the caption, and beside it what that leaves open, above
    /// all `state`; without a caption what the control is.
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
    QString plain_name_;
    tool_tips tips_;
};

/// Builds the widget for a control of any kind that is seen; none for a timer.
std::unique_ptr<control_adapter> make_adapter(control& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
