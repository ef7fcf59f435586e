#include "qt/qt_events.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <thread>

namespace desk::qt {

namespace {

/// Ends a wait this long after the step, so that a coinciding tick is served first.
constexpr std::int64_t tick_first_ns = 100'000;
constexpr std::chrono::milliseconds patience(50);

} // namespace

qt_events::qt_events(event_gate& gate) : gate_(gate) {
    next_step_.setSingleShot(true);
    next_step_.setTimerType(Qt::PreciseTimer);
}

std::int64_t qt_events::running_ns() const {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() - start_).count();
}

std::int64_t qt_events::clock_ms() { return clock_.clock_ms(running_ns()); }

void qt_events::pump() {
    gate_.throw_if_over();
    if (gate_.follow) gate_.follow();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    gate_.throw_if_over();
}

void qt_events::pump_and_rest() {
    gate_.throw_if_over();
    gate_.cursor.wait();
    if (gate_.follow) gate_.follow();
    // at most a little over a millisecond after the step, since timers fire late, never early. A tick due at the same
    // time comes first: after the step it would wait until the end of the next one.
    const std::int64_t rest_ns = clock_.rest_ns(running_ns()) + tick_first_ns;
    next_step_.start(static_cast<int>((rest_ns + 999'999) / 1'000'000));
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    gate_.throw_if_over();
}

void qt_events::turn_without_progress(std::string_view /*waiting_for*/) {
    // a byte leaves the port in half a millisecond; longer waits need no close watch
    const auto now = std::chrono::steady_clock::now();
    if (now - last_turn_ > patience) first_turn_ = now;
    last_turn_ = now;
    if (now - first_turn_ < patience) {
        std::this_thread::yield();
        return;
    }
    gate_.end_if_requested();
    gate_.cursor.wait();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace desk::qt
