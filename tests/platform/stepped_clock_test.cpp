#include "platform/stepped_clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <vector>

namespace desk {
namespace {

using namespace std::chrono_literals;
using fine_time = stepped_clock::fine_time;

TEST(stepped_clock, advances_in_steps_of_5_ms) {
    const stepped_clock clock;
    EXPECT_EQ(clock.time(0ms), 0ms);
    EXPECT_EQ(clock.time(5ms - 1ns), 0ms);
    EXPECT_EQ(clock.time(5ms), 5ms);
    EXPECT_EQ(clock.time(1h), 1h);
    EXPECT_EQ(clock.rest(0ms), 5ms);
    EXPECT_EQ(clock.rest(7ms), 3ms);
}

TEST(stepped_clock, steps_at_multiples_of_5_ms_from_the_start_of_a_timer) {
    stepped_clock clock;
    clock.share_phase(103ms);
    EXPECT_EQ(clock.time(103ms), 100ms) << "the clock does not jump";
    EXPECT_EQ(clock.rest(103ms), 5ms);
    EXPECT_EQ(clock.time(105ms), 100ms) << "the present step is longer";
    EXPECT_EQ(clock.time(108ms - 1ns), 100ms);
    EXPECT_EQ(clock.time(108ms), 105ms);
    EXPECT_EQ(clock.time(123ms - 1ns), 115ms);
    EXPECT_EQ(clock.time(123ms), 120ms) << "the tick after 20 ms comes with a step";
    EXPECT_EQ(clock.time(143ms), 140ms) << "so does the next one";
}

TEST(stepped_clock, does_not_change_if_a_timer_starts_with_a_step) {
    stepped_clock clock;
    clock.share_phase(100ms);
    EXPECT_EQ(clock.time(105ms), 105ms);
    clock.share_phase(103ms);
    EXPECT_EQ(clock.time(108ms - 1ns), 100ms) << "it had its usual length so far";
}

TEST(stepped_clock, advances_however_often_timers_start) {
    stepped_clock clock;
    for (fine_time now{0}; now < 1s; now += 1ms)
        clock.share_phase(now);
    EXPECT_GE(clock.time(1000ms), 500ms) << "no step is longer than two";
}

TEST(stepped_clock, never_goes_back_and_has_no_step_shorter_than_5_ms) {
    stepped_clock clock;
    std::vector<fine_time> steps;
    std::chrono::milliseconds last{0};
    std::uint32_t chance = 1;
    for (fine_time now{0}; now < 2s; now += 100us) {
        chance = chance * 1664525 + 1013904223;
        if (chance >> 24 < 8) clock.share_phase(now);
        const std::chrono::milliseconds shown = clock.time(now);
        ASSERT_TRUE(shown == last || shown == last + 5ms) << now.count();
        if (shown != last) steps.push_back(now);
        last = shown;
    }
    ASSERT_GT(steps.size(), 200U);
    for (std::size_t i = 1; i < steps.size(); ++i) {
        ASSERT_GE(steps[i] - steps[i - 1], 5ms) << i;
        ASSERT_LE(steps[i] - steps[i - 1], 10ms) << i;
    }
}

} // namespace
} // namespace desk
