#include "robot/virtual_events.h"

#include "controls/controls.h"
#include "runtime/failure.h"

#include <algorithm>

namespace desk::robot {

namespace {

constexpr std::int64_t endless_turns = 1'000'000;

} // namespace

void virtual_events::start(std::vector<window*> windows) {
    clock_ = milliseconds(0);
    turns_without_progress_ = 0;
    windows_ = std::move(windows);
    timers_.clear();
    pending_.clear();
    ended_by_.reset();
}

void virtual_events::later(milliseconds delay, std::function<void()> work) {
    const milliseconds due = clock_ + delay;
    const auto next = std::upper_bound(pending_.begin(), pending_.end(), due,
                                       [](milliseconds time, const pending& p) { return time < p.due; });
    pending_.insert(next, {due, std::move(work)});
}

void virtual_events::pump() {
    throw_if_over();
    settle_focus();
    turns_without_progress_ = 0;
    if (!run_due()) clock_ += clock_step;
    throw_if_over();
}

void virtual_events::run_on(milliseconds delay, const std::function<bool()>& go_on) {
    const milliseconds end = clock_ + delay;
    while (clock_ < end && go_on())
        pump();
    if (go_on()) run_due();
    throw_if_over();
}

bool virtual_events::run_due() {
    bool ran = false;
    follow_timers();
    while (!ended_by_ && !abandoned_) {
        const auto work = take_next_due();
        if (!work) break;
        ran = true;
        run_event(work);
        follow_timers();
    }
    return ran;
}

void virtual_events::settle_focus() {
    for (window* w : windows_)
        w->settle_focus();
}

void virtual_events::follow_timers() {
    for (window* w : windows_) {
        for (timer* t : w->timers()) {
            if (t->enabled)
                timers_.try_emplace(t, clock_ + milliseconds(t->interval));
            else
                timers_.erase(t);
        }
    }
}

std::function<void()> virtual_events::take_next_due() {
    const auto tick = std::min_element(timers_.begin(), timers_.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    const bool timer_is_due = tick != timers_.end() && tick->second <= clock_;
    const bool pending_is_due = !pending_.empty() && pending_.front().due <= clock_;
    if (timer_is_due && (!pending_is_due || tick->second <= pending_.front().due)) {
        tick->second = clock_ + milliseconds(tick->first->interval);
        return tick->first->on_timer;
    }
    if (!pending_is_due) return {};
    auto work = std::move(pending_.front().work);
    pending_.pop_front();
    return work;
}

void virtual_events::run_event(const std::function<void()>& work) {
    try {
        work();
    } catch (const runtime_failure& f) {
        if (!ended_by_) ended_by_ = std::make_shared<runtime_failure>(f);
    } catch (const program_over&) {
        // a suspended procedure has ended
    } catch (const std::exception& e) {
        // a defect of the desk: reported like a run-time failure
        if (!ended_by_) ended_by_ = std::make_shared<runtime_failure>(failure::invalid_procedure_call, e.what());
    }
}

void virtual_events::turn_without_progress(std::string_view waiting_for) {
    if (++turns_without_progress_ < endless_turns) return;
    ended_by_ = std::make_shared<runtime_failure>(failure::does_not_return,
                                                  std::string(waiting_for) + ": no progress after a million turns");
    throw program_over();
}

void virtual_events::throw_if_over() const {
    if (ended_by_ || abandoned_) throw program_over();
}

} // namespace desk::robot
