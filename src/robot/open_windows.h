#pragma once

#include "platform/modal_windows.h"
#include "robot/virtual_events.h"

#include <functional>
#include <string>
#include <vector>

namespace desk::robot {

/// The windows on the screen: the main window and the modal ones above it.
class open_windows final : public modal_windows {
public:
    explicit open_windows(virtual_events& events) : events_(events) {}

    /// Lets the operator go on until `closed`; the procedure that has opened the window stays suspended meanwhile.
    std::function<void(const std::function<bool()>& closed)> let_operator_work;

    /// The program begins: its main window alone. None: it is over.
    void start(window* main_window);

    void show(window& w) override;

    /// The window that the operator can reach.
    window* top() const;
    bool modal_is_open() const { return top() != main(); }
    /// Whether a procedure is suspended behind a window, open or closed just now.
    bool suspends() const { return windows_.size() > 1; }
    /// By its name; none that is open: nullptr.
    window* find(const std::string& name) const;

private:
    virtual_events& events_;
    window* main() const { return windows_.empty() ? nullptr : windows_.front(); }

    std::vector<window*> windows_; // the main window, and those above it; also after a fatal end
};

} // namespace desk::robot
