#pragma once

#include <cstdint>

namespace desk::qt {

/// A clock that advances in steps of 5 ms, fed with nanoseconds of one that never goes back. A timer that is started
/// can shift the steps that follow into its own phase, so that its tick falls together with a step.
class stepped_clock {
public:
    static constexpr std::int64_t step_ms = 5;
    static constexpr std::int64_t step_ns = step_ms * 1'000'000;

    std::int64_t clock_ms(std::int64_t now_ns) const { return steps(now_ns) * step_ms; }

    /// How long the present step still lasts.
    std::int64_t rest_ns(std::int64_t now_ns) const { return step_ns - (now_ns - begin_of_step(now_ns)); }

    /// The next steps come 5, 10, 15, ... ms from now on: the present step lasts longer than the others, and no step
    /// is ever shorter. A step is made longer once only, so that the clock advances however often this is called.
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

    std::int64_t phase_ns_ = 0;           // a moment at which a step begins, or goes on with its whole length
    std::int64_t steps_before_phase_ = 0; // how many were over at that moment
    bool lengthened_ = false;             // the step at that moment had begun before it
};

} // namespace desk::qt
