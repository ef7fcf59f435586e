#pragma once

#include "qt/busy_cursor.h"

#include <functional>
#include <memory>

namespace desk {
class runtime_failure;
}

namespace desk::qt {

/// The only path from Qt's events to the desk. Exceptions never cross Qt's frames: the gate catches and stores a
/// run-time failure or the end of the program, every suspended procedure ends at its pump, and the outermost event
/// ends the program.
class event_gate {
public:
    /// Called after every event: updates the widgets.
    std::function<void()> follow;
    /// Called just before a window starts a timer.
    std::function<void()> timer_starts;
    /// Called once, by the outermost event, when the program is over.
    std::function<void()> leave;

    /// Runs an event of the desk; does nothing once the program is over.
    void run(const std::function<void()>& event) noexcept;

    void finish() { over_ = true; }

    /// For waits in which no event delivers the request: whether the system has requested the end, and how to end in
    /// order.
    std::function<bool()> end_requested;
    std::function<void()> end_in_order;

    /// If the system has requested the end, ends the program in order. Throws program_over if the program is over.
    void end_if_requested();

    /// Ends the event loops of boxes, dialogs, menus and modal windows.
    void end_waits();

    /// Called by each event that ends once the program is over: ends the loops of modal windows.
    std::function<void()> end_loops;

    bool over() const { return over_; }
    const std::shared_ptr<const runtime_failure>& failure() const { return failure_; }

    busy_cursor cursor;

    /// Throws program_over if the program is over. Call it before returning to a procedure of the desk.
    void throw_if_over() const;

private:
    void guarded(const std::function<void()>& work);

    int depth_ = 0;
    bool over_ = false;
    bool left_ = false;
    std::shared_ptr<const runtime_failure> failure_;
};

} // namespace desk::qt
