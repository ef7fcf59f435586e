#include "cli/real_events.h"

#include "controls/controls.h"
#include "runtime/failure.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace desk::cli {

namespace {

using namespace std::chrono_literals;

/// Turns further apart than this belong to different waits.
constexpr auto patience = 50ms;
/// A port that takes nothing for so long never will. The window waits for ever; a script must not.
constexpr auto longest_wait = 5s;

} // namespace

void real_events::start(std::vector<window*> windows) {
    windows_ = std::move(windows);
    timers_.clear();
    failure_.reset();
    waited_for_.clear();
}

void real_events::pump() {
    throw_if_over();
    run_due();
    throw_if_over();
}

void real_events::pump_and_rest() {
    throw_if_over();
    if (on_rest) on_rest();
    if (!run_due()) {
        const nanoseconds now = running();
        nanoseconds wake_up = now + clock_.rest(now);
        for (const auto& [t, due] : timers_)
            wake_up = std::min(wake_up, due);
        std::this_thread::sleep_until(start_ + wake_up);
        run_due();
    }
    throw_if_over();
}

void real_events::turn_without_progress(std::string_view waiting_for) {
    const nanoseconds now = running();
    if (now - last_turn_ > patience) first_turn_ = now;
    last_turn_ = now;
    throw_if_over();
    if (now - first_turn_ < patience) {
        std::this_thread::yield();
        return;
    }
    if (now - first_turn_ > longest_wait) {
        waited_for_ = waiting_for;
        throw program_over();
    }
    if (on_rest) on_rest();
    std::this_thread::sleep_for(1ms);
}

void real_events::run_event(const std::function<void()>& work) {
    try {
        work();
    } catch (const runtime_failure& f) {
        if (!failure_) failure_ = std::make_shared<runtime_failure>(f);
    }
}

void real_events::throw_if_over() const {
    if (failure_ || !waited_for_.empty() || request_.received()) throw program_over();
}

void real_events::follow_timers() {
    for (window* w : windows_) {
        for (timer* t : w->timers()) {
            if (!t->enabled) {
                timers_.erase(t);
            } else if (!timers_.contains(t)) {
                // the ticks coincide with steps, as on the screen; a wait that ends with a tick costs no further step
                clock_.share_phase(running());
                const nanoseconds now = running();
                timers_.emplace(t, now + clock_.rest(now) - clock_step + std::chrono::milliseconds(t->interval));
            }
        }
    }
}

bool real_events::run_due() {
    bool ran = false;
    while (!failure_) {
        follow_timers();
        const nanoseconds now = running();
        const auto due = std::find_if(timers_.begin(), timers_.end(), [now](const auto& t) { return t.second <= now; });
        if (due == timers_.end()) break;
        due->second = now + std::chrono::milliseconds(due->first->interval);
        timer& tick = *due->first;
        ran = true;
        run_event([&tick] { tick.on_timer(); });
    }
    return ran;
}

} // namespace desk::cli
