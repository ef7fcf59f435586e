#pragma once

#include "controls/window.h"
#include "platform/end_request.h"
#include "platform/event_pump.h"
#include "platform/stepped_clock.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace desk {
class runtime_failure;
}

namespace desk::cli {

/// The real clock, in steps of 5 ms, and the timers of the windows. There are no other events. A wait sleeps until the
/// next step or tick: the receiver's tick decides when bytes are read, so an arriving byte needs no event.
class real_events final : public event_pump {
public:
    using nanoseconds = std::chrono::nanoseconds;

    explicit real_events(const end_request& request) : request_(request) {}

    std::chrono::milliseconds clock_time() override { return clock_.time(running()); }
    void pump() override;
    void pump_and_rest() override;
    void turn_without_progress(std::string_view waiting_for) override;

    /// From now on follows the timers of these windows, and forgets how the last program ended.
    void start(std::vector<window*> windows);

    /// Runs an event of the desk. A run-time failure in it ends the program: it is kept, and every suspended procedure
    /// ends at its pump.
    void run_event(const std::function<void()>& work);

    /// Called in each wait.
    std::function<void()> on_rest;

    /// Why the program is over; null or empty: it is not, or the end was requested.
    const std::shared_ptr<const runtime_failure>& failure() const { return failure_; }
    /// What a wait without progress has waited for in vain.
    const std::string& waited_for() const { return waited_for_; }

private:
    nanoseconds running() const { return std::chrono::steady_clock::now() - start_; }
    void throw_if_over() const;
    void follow_timers();
    bool run_due();

    const end_request& request_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    stepped_clock clock_;
    std::vector<window*> windows_;
    std::map<timer*, nanoseconds> timers_; // the enabled ones, with the time of the next tick
    nanoseconds first_turn_{0};            // of the current wait without progress
    nanoseconds last_turn_{-std::chrono::hours(1)};
    std::shared_ptr<const runtime_failure> failure_;
    std::string waited_for_;
};

} // namespace desk::cli
