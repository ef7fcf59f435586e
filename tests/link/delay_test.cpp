#include "link/delay.h"

#include "support/fake_machine.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

/// The time that a wait takes with a clock of these steps.
std::int64_t time_of(float seconds, std::int64_t step) {
    test::scripted_events events;
    events.now = 1000;
    events.step = step;
    delay_sec(events, seconds);
    return events.now - 1000;
}

TEST(delay_sec, waits_for_more_than_the_given_time) {
    EXPECT_EQ(time_of(0.001F, 1), 2) << "one millisecond is not more than one";
    EXPECT_EQ(time_of(0.01F, 1), 11);
    EXPECT_EQ(time_of(0.05F, 1), 51);
    EXPECT_EQ(time_of(1.0F, 1), 1001);
}

TEST(delay_sec, lasts_until_the_next_step_of_the_clock) {
    EXPECT_EQ(time_of(0.001F, 5), 5);
    EXPECT_EQ(time_of(0.01F, 5), 15);
    EXPECT_EQ(time_of(0.05F, 5), 55);
}

TEST(delay_sec, pumps_events_while_it_waits) {
    test::scripted_events events;
    bool came_in = false;
    events.in(10, [&] { came_in = true; });
    delay_sec(events, 0.05F);
    EXPECT_TRUE(came_in);
}

TEST(delay_sec, pumps_at_least_once_if_no_time_has_passed) {
    test::scripted_events events;
    delay_sec(events, 0);
    EXPECT_EQ(events.pumps, 1);
}

/// A clock that has moved each time it is read.
class running_clock final : public event_pump {
public:
    std::chrono::milliseconds clock_time() override { return now += std::chrono::milliseconds(10); }
    void pump() override { ++pumps; }
    void pump_and_rest() override { ++pumps; }
    void turn_without_progress(std::string_view /*waiting_for*/) override {}
    std::chrono::milliseconds now{0};
    int pumps = 0;
};

TEST(delay_sec, returns_without_a_pump_if_the_time_is_over) {
    running_clock events;
    delay_sec(events, 0.001F);
    EXPECT_EQ(events.pumps, 0);
}

} // namespace
} // namespace desk
