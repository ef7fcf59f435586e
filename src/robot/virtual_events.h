#pragma once

#include "controls/window.h"
#include "platform/event_pump.h"

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

/// The virtual clock with the pending events: timers of the windows and what the operator is to do later. The clock
/// moves by one step for each turn of the pump in which nothing is due.
class virtual_events final : public event_pump {
public:
    static constexpr std::int64_t step_ms = 5;

    std::int64_t clock_ms() override { return clock_; }
    void pump() override;
    void pump_and_rest() override { pump(); }
    void turn_without_progress(std::string_view waiting_for) override;

    /// A fresh clock at 0 with nothing pending, for these windows' timers.
    void start(std::vector<window*> windows);

    /// From now on these windows' timers tick.
    void follow_windows(std::vector<window*> windows) { windows_ = std::move(windows); }

    /// Every suspended procedure ends at its pump, without a failure.
    void abandon() { abandoned_ = true; }

    /// Throws program_over when the program has ended: for whoever gives control back to a procedure.
    void throw_if_over() const;

    /// Does something when the clock has run on, in the middle of whatever goes on then.
    void later(std::int64_t delay_ms, std::function<void()> work);

    /// Runs the clock on with events pumped, and does what is due then; ends early where `go_on` no longer holds.
    void run_on(
        std::int64_t delay_ms, const std::function<bool()>& go_on = [] { return true; });

    /// Runs an event of the desk. A run-time failure inside it ends the program: it is kept, and every suspended
    /// procedure ends at its pump.
    void run_event(const std::function<void()>& work);

    /// As a face does behind each event and at each pump.
    void settle_focus();

    const std::shared_ptr<const runtime_failure>& ended_by() const { return ended_by_; }

private:
    struct pending {
        std::int64_t due;
        std::function<void()> work;
    };

    bool run_due();
    void follow_timers();
    std::function<void()> take_next_due();

    std::int64_t clock_ = 0;
    std::int64_t turns_without_progress_ = 0;
    std::vector<window*> windows_;
    std::map<timer*, std::int64_t> timers_; // the running ones, with the time of the next tick
    std::deque<pending> pending_;           // in order of time, then of entry
    std::shared_ptr<const runtime_failure> ended_by_;
    bool abandoned_ = false;
};

} // namespace desk::robot
