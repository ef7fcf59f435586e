#pragma once

#include "platform/event_pump.h"

#include <chrono>
#include <cstdint>

namespace desk::qt {

/// The clock of the desk, driven by a fine one that never goes back. A timer that starts can shift the following steps
/// into its own phase, so that its ticks coincide with steps.
class stepped_clock {
public:
    using fine_time = std::chrono::nanoseconds;

    std::chrono::milliseconds time(fine_time now) const { return steps(now) * clock_step; }

    /// The remaining length of the current step.
    fine_time rest(fine_time now) const { return clock_step - (now - begin_of_step(now)); }

    /// The next steps come 5, 10, 15, ... ms from now: the current step is longer than the others, and no step is ever
    /// shorter. A step is lengthened only once, so that the clock advances however often this is called.
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

    fine_time phase_{0};                  // a moment at which a step begins, or continues for its whole length
    std::int64_t steps_before_phase_ = 0; // that were over at that moment
    bool lengthened_ = false;             // the step at that moment had begun before it
};

} // namespace desk::qt
