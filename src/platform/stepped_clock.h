#pragma once

#include "platform/event_pump.h"

#include <chrono>
#include <cstdint>

namespace desk {

/// The clock of the desk, driven by a monotonic time. Starting a timer can shift the following steps into the timer's
/// phase, so that its ticks coincide with steps.
class stepped_clock {
public:
    using fine_time = std::chrono::nanoseconds;

    std::chrono::milliseconds time(fine_time now) const { return steps(now) * clock_step; }

    /// Time left in the current step.
    fine_time rest(fine_time now) const { return clock_step - (now - begin_of_step(now)); }

    /// Makes the next steps fall 5, 10, 15, ... ms from now: the current step is longer than the others, never
    /// shorter. It is lengthened only once, so the clock advances however often this is called.
    void share_phase(fine_time now) {
        if (now < phase_ + clock_step && lengthened_) return;
        const std::int64_t present = steps(now);
        lengthened_ = begin_of_step(now) != now;
        phase_ = now;
        steps_before_phase_ = present;
    }

private:
    std::int64_t steps(fine_time now) const { return steps_before_phase_ + (now - phase_) / clock_step; }
    fine_time begin_of_step(fine_time now) const { return now - (now - phase_) % clock_step; }

    fine_time phase_{0};                  // start of a step, or the moment a step was lengthened
    std::int64_t steps_before_phase_ = 0; // steps completed by then
    bool lengthened_ = false;             // the step at that moment had begun earlier
};

} // namespace desk
