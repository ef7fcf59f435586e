#pragma once

#include "platform/modal_windows.h"
#include "qt/event_gate.h"
#include "qt/window_adapter.h"

#include <QPointer>
#include <QWidget>

#include <vector>

namespace desk::qt {

/// Modal windows on the screen, each in a loop of events of its own.
class qt_modal_windows final : public modal_windows {
public:
    explicit qt_modal_windows(event_gate& gate) : gate_(gate) {}
    void show(window& w) override;

    /// Brings the open ones up to date.
    void follow();

    /// None is open: nullptr.
    QWidget* on_top() const { return open_.empty() ? nullptr : open_.back(); }

    /// The program is over: their loops end.
    void hide_all();

    QPointer<QWidget> parent;

private:
    event_gate& gate_;
    std::vector<window_adapter*> open_;
};

} // namespace desk::qt
