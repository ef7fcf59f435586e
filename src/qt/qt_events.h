#pragma once

#include "platform/event_pump.h"
#include "platform/stepped_clock.h"
#include "qt/event_gate.h"

#include <QTimer>

#include <chrono>

namespace desk::qt {

/// The real clock, in steps of 5 ms, and Qt's pending events.
class qt_events final : public event_pump {
public:
    explicit qt_events(event_gate& gate);

    std::chrono::milliseconds clock_time() override;
    void pump() override;
    void pump_and_rest() override;
    void turn_without_progress(std::string_view waiting_for) override;

    /// Call it just before a timer starts: its ticks then coincide with steps of the clock.
    void share_phase() { clock_.share_phase(running()); }

private:
    std::chrono::nanoseconds running() const;

    event_gate& gate_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    stepped_clock clock_;
    QTimer next_step_;
    std::chrono::steady_clock::time_point first_turn_; // of the current wait without progress
    std::chrono::steady_clock::time_point last_turn_;
};

} // namespace desk::qt
