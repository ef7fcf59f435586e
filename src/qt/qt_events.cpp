#include "qt/qt_events.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <thread>

namespace desk::qt {

namespace {

/// Ends a wait this long after the step, so that a coinciding tick is served first.
constexpr std::chrono::microseconds tick_first(100);
constexpr std::chrono::milliseconds patience(50);

} // namespace

qt_events::qt_events(event_gate& gate) : gate_(gate) {
    next_step_.setSingleShot(true);
    next_step_.setTimerType(Qt::PreciseTimer);
}

std::chrono::nanoseconds qt_events::running() const { return std::chrono::steady_clock::now() - start_; }

std::chrono::milliseconds qt_events::clock_time() { return clock_.time(running()); }

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
    next_step_.start(std::chrono::ceil<std::chrono::milliseconds>(clock_.rest(running()) + tick_first));
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
