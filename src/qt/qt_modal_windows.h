#pragma once

#include "platform/modal_windows.h"
#include "qt/event_gate.h"
#include "qt/window_adapter.h"

#include <QPointer>
#include <QWidget>

#include <vector>

namespace desk::qt {

/// Modal windows on the screen, each with its own event loop.
class qt_modal_windows final : public modal_windows {
public:
    explicit qt_modal_windows(event_gate& gate) : gate_(gate) {}
    void show(window& w) override;

    void follow();

    /// nullptr if none is open.
    QWidget* on_top() const { return open_.empty() ? nullptr : open_.back(); }

    /// Ends their loops; the program is over.
    void hide_all();

    QPointer<QWidget> parent;

private:
    event_gate& gate_;
    std::vector<window_adapter*> open_;
};

} // namespace desk::qt
