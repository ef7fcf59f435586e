#include "qt/stepped_clock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace desk::qt {
namespace {

constexpr std::int64_t ms = 1'000'000; // in nanoseconds

TEST(stepped_clock, advances_in_steps_of_5_ms) {
    const stepped_clock clock;
    EXPECT_EQ(clock.clock_ms(0), 0);
    EXPECT_EQ(clock.clock_ms(5 * ms - 1), 0);
    EXPECT_EQ(clock.clock_ms(5 * ms), 5);
    EXPECT_EQ(clock.clock_ms(3'600'000 * ms), 3'600'000);
    EXPECT_EQ(clock.rest_ns(0), 5 * ms);
    EXPECT_EQ(clock.rest_ns(7 * ms), 3 * ms);
}

TEST(stepped_clock, steps_at_multiples_of_5_ms_from_the_start_of_a_timer) {
    stepped_clock clock;
    clock.share_phase(103 * ms);
    EXPECT_EQ(clock.clock_ms(103 * ms), 100) << "the clock does not jump";
    EXPECT_EQ(clock.rest_ns(103 * ms), 5 * ms);
    EXPECT_EQ(clock.clock_ms(105 * ms), 100) << "the present step is longer";
    EXPECT_EQ(clock.clock_ms(108 * ms - 1), 100);
    EXPECT_EQ(clock.clock_ms(108 * ms), 105);
    EXPECT_EQ(clock.clock_ms(123 * ms - 1), 115);
    EXPECT_EQ(clock.clock_ms(123 * ms), 120) << "the tick after 20 ms comes with a step";
    EXPECT_EQ(clock.clock_ms(143 * ms), 140) << "so does the next one";
}

TEST(stepped_clock, does_not_change_if_a_timer_starts_with_a_step) {
    stepped_clock clock;
    clock.share_phase(100 * ms);
    EXPECT_EQ(clock.clock_ms(105 * ms), 105);
    clock.share_phase(103 * ms);
    EXPECT_EQ(clock.clock_ms(108 * ms - 1), 100) << "it had its usual length so far";
}

TEST(stepped_clock, advances_however_often_timers_start) {
    stepped_clock clock;
    for (std::int64_t now = 0; now < 1000 * ms; now += ms)
        clock.share_phase(now);
    EXPECT_GE(clock.clock_ms(1000 * ms), 500) << "no step is longer than two";
}

TEST(stepped_clock, never_goes_back_and_has_no_step_shorter_than_5_ms) {
    stepped_clock clock;
    std::vector<std::int64_t> steps;
    std::int64_t last = 0;
    std::uint32_t chance = 1;
    for (std::int64_t now = 0; now < 2000 * ms; now += ms / 10) {
        chance = chance * 1664525 + 1013904223;
        if (chance >> 24 < 8) clock.share_phase(now);
        const std::int64_t shown = clock.clock_ms(now);
        ASSERT_TRUE(shown == last || shown == last + 5) << now;
        if (shown != last) steps.push_back(now);
        last = shown;
    }
    ASSERT_GT(steps.size(), 200U);
    for (std::size_t i = 1; i < steps.size(); ++i) {
        ASSERT_GE(steps[i] - steps[i - 1], 5 * ms) << i;
        ASSERT_LE(steps[i] - steps[i - 1], 10 * ms) << i;
    }
}

} // namespace
} // namespace desk::qt
