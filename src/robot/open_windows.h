#pragma once

#include "platform/modal_windows.h"
#include "robot/virtual_events.h"

#include <functional>
#include <string>
#include <vector>

namespace desk::robot {

/// The open windows: the main window and the modal ones above it.
class open_windows final : public modal_windows {
public:
    explicit open_windows(virtual_events& events) : events_(events) {}

    /// Serves the operator until `closed`, while the procedure that opened the window is suspended.
    std::function<void(const std::function<bool()>& closed)> let_operator_work;

    /// Starts a program with its main window. None: ends the program.
    void start(window* main_window);

    void show(window& w) override;

    /// The only window that the operator can use.
    window* top() const;
    bool modal_is_open() const { return top() != main(); }
    /// Whether a procedure is suspended by a window that is open or has just been closed.
    bool suspends() const { return windows_.size() > 1; }
    /// Finds an open window by name; nullptr if there is none.
    window* find(const std::string& name) const;

private:
    virtual_events& events_;
    window* main() const { return windows_.empty() ? nullptr : windows_.front(); }

    std::vector<window*> windows_; // the main window first; kept after a fatal end
};

} // namespace desk::robot
