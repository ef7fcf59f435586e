#pragma once

#include "controls/window.h"
#include "qt/access_keys.h"
#include "qt/control_adapter.h"
#include "qt/event_gate.h"
#include "qt/focus_guide.h"
#include "qt/plan_area.h"
#include "qt/window_place.h"

#include <QTimer>
#include <QWidget>

#include <map>
#include <memory>
#include <vector>

namespace desk::qt {

/// The real window of a window model, with a widget for each control and a QTimer for each timer.
class window_adapter final : public QWidget {
    Q_OBJECT

public:
    /// Creates the main window.
    window_adapter(desk::window& model, event_gate& gate);
    /// Creates a modal window above `parent`. Its title bar closes it only if the model handles that.
    window_adapter(desk::window& model, event_gate& gate, QWidget* parent);

    /// Updates every changed control.
    void follow();

    void focus_first();

signals:
    /// A modal window has been closed.
    void hidden();

protected:
    void closeEvent(QCloseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void hideEvent(QHideEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    bool event(QEvent* e) override;
    bool focusNextPrevChild(bool next) override;

private:
    void build_all();
    void build(control& c);
    void fit_plan();
    void set_scale(double scale);
    /// Gives the extra room to the control that grows, and moves the others along.
    void share_extra_room(QSize extra);
    void follow_window();
    void follow_focus();
    bool closes_frame(int key);
    /// The stop from which the tab key continues, or nullptr.
    control* last_stop(const std::vector<control*>& stops) const;
    void follow_timer(const timer& model, QTimer& ticks) const;

    desk::window& model_;
    event_gate& gate_;
    QSize plan_; // in twips
    window_place place_;
    plan_area& area_;
    QSize extra_room_;
    const control* in_sight_ = nullptr; // the focused control last scrolled to
    std::map<const control*, std::unique_ptr<control_adapter>> adapters_;
    std::map<const control*, std::unique_ptr<QTimer>> timers_;
    focus_guide guide_;
    std::unique_ptr<access_keys> keys_;
    std::vector<control*> visited_stops_; // the stops up to the latest one that the tab key reached
};

} // namespace desk::qt
