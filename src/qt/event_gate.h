#pragma once

#include "qt/busy_pointer.h"

#include <functional>
#include <memory>

namespace desk {
class runtime_failure;
}

namespace desk::qt {

/// The one door through which events of the toolkit reach the desk. A run-time failure or the end of the program never
/// crosses the toolkit's own frames: it is caught here and remembered, every suspended procedure ends at its pump, and
/// the outermost event ends the program.
class event_gate {
public:
    /// Called after every event: brings the widgets up to date.
    std::function<void()> follow;
    /// Called just before a timer of a window is started.
    std::function<void()> timer_starts;
    /// Called once, by the outermost event, when the program is over.
    std::function<void()> leave;

    /// Runs an event of the desk. Nothing happens once the program is over.
    void run(const std::function<void()>& event) noexcept;

    /// The program is to end.
    void finish() { over_ = true; }

    /// Whether the system has requested the end, and what ends the program in order then: for a wait in which no event
    /// brings the request.
    std::function<bool()> end_requested;
    std::function<void()> end_in_order;

    /// Ends the program in order and throws program_over where the system has requested it.
    void end_if_requested();

    /// Ends the loops of events of boxes, dialogs, menus and modal windows.
    void end_waits();

    /// Called by every event that ends when the program is over: the loops of modal windows end.
    std::function<void()> end_loops;

    bool over() const { return over_; }
    const std::shared_ptr<const runtime_failure>& failure() const { return failure_; }

    /// Follows the events through this gate.
    busy_pointer pointer;

    /// Throws program_over when the program is over: for whoever gives control back to a procedure of the desk.
    void throw_if_over() const;

private:
    void guarded(const std::function<void()>& work);

    int depth_ = 0;
    bool over_ = false;
    bool left_ = false;
    std::shared_ptr<const runtime_failure> failure_;
};

} // namespace desk::qt
