#pragma once

#include <cstdint>

namespace desk::qt {

/// A clock in steps of 5 ms, driven by a monotonic time in nanoseconds. Starting a timer can shift the following
/// steps into the timer's phase, so that its ticks coincide with steps.
class stepped_clock {
public:
    static constexpr std::int64_t step_ms = 5;
    static constexpr std::int64_t step_ns = step_ms * 1'000'000;

    std::int64_t clock_ms(std::int64_t now_ns) const { return steps(now_ns) * step_ms; }

    /// Time left in the current step.
    std::int64_t rest_ns(std::int64_t now_ns) const { return step_ns - (now_ns - begin_of_step(now_ns)); }

    /// Makes the next steps fall 5, 10, 15, ... ms from now: the current step is longer than the others, never
    /// shorter. It is lengthened only once, so the clock advances however often this is called.
    void share_phase(std::int64_t now_ns) {
        if (now_ns < phase_ns_ + step_ns && lengthened_) return;
        const std::int64_t present = steps(now_ns);
        lengthened_ = begin_of_step(now_ns) != now_ns;
        phase_ns_ = now_ns;
        steps_before_phase_ = present;
    }

private:
    std::int64_t steps(std::int64_t now_ns) const { return steps_before_phase_ + (now_ns - phase_ns_) / step_ns; }
    std::int64_t begin_of_step(std::int64_t now_ns) const { return now_ns - (now_ns - phase_ns_) % step_ns; }

    std::int64_t phase_ns_ = 0;           // start of a step, or the moment a step was lengthened
    std::int64_t steps_before_phase_ = 0; // steps completed by then
    bool lengthened_ = false;             // the step at that moment had begun earlier
};

} // namespace desk::qt
