#pragma once

#include "controls/window.h"
#include "platform/event_pump.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace desk {
class runtime_failure;
}

namespace desk::robot {

/// The virtual clock and the pending events: timers of the windows and later actions of the operator. The clock
/// advances by one step in each pump in which nothing is due.
class virtual_events final : public event_pump {
public:
    using milliseconds = std::chrono::milliseconds;

    milliseconds clock_time() override { return clock_; }
    void pump() override;
    void pump_and_rest() override { pump(); }
    void turn_without_progress(std::string_view waiting_for) override;

    /// Sets the clock to 0, discards pending events and follows the timers of these windows.
    void start(std::vector<window*> windows);

    /// From now on follows the timers of these windows.
    void follow_windows(std::vector<window*> windows) { windows_ = std::move(windows); }

    /// Ends every suspended procedure at its pump, without a failure.
    void abandon() { abandoned_ = true; }
    bool abandoned() const { return abandoned_; }

    /// Throws program_over if the program has ended; to be called before returning control to a procedure.
    void throw_if_over() const;

    /// Does `work` after `delay`, inside whatever procedure is pumping then.
    void later(milliseconds delay, std::function<void()> work);

    /// Pumps until the clock has advanced by `delay`, and does what is due then. Ends early once `go_on` is false.
    void run_on(
        milliseconds delay, const std::function<bool()>& go_on = [] { return true; });

    /// Runs an event of the desk. A run-time failure inside it ends the program: it is kept, and every suspended
    /// procedure ends at its pump.
    void run_event(const std::function<void()>& work);

    /// As a window on the screen does after each event and in each pump.
    void settle_focus();

    const std::shared_ptr<const runtime_failure>& ended_by() const { return ended_by_; }

private:
    struct pending {
        milliseconds due;
        std::function<void()> work;
    };

    bool run_due();
    void follow_timers();
    std::function<void()> take_next_due();

    milliseconds clock_{0};
    std::int64_t turns_without_progress_ = 0;
    std::vector<window*> windows_;
    std::map<timer*, milliseconds> timers_; // the enabled ones, with the time of the next tick
    std::deque<pending> pending_;           // in order of time, then of entry
    std::shared_ptr<const runtime_failure> ended_by_;
    bool abandoned_ = false;
};

} // namespace desk::robot
