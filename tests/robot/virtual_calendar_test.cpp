#include "robot/virtual_calendar.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace desk::robot {
namespace {

class virtual_calendar_test : public testing::Test {
protected:
    virtual_calendar_test() { events.start({}); }
    /// Day, hour, minute and second when the clock has run on so far.
    std::array<int, 4> at(std::int64_t clock_ms) {
        run_to(clock_ms);
        const std::tm now = dates.now();
        return {now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec};
    }
    void run_to(std::int64_t clock_ms) { events.run_on(clock_ms - events.clock_ms()); }

    virtual_events events;
    virtual_calendar dates{events};
};

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

TEST_F(virtual_calendar_test, starts_at_midnight_of_the_first_of_january_2000) {
    const std::tm now = dates.now();
    EXPECT_EQ(now.tm_year, 100);
    EXPECT_EQ(now.tm_mon, 0);
    EXPECT_EQ(now.tm_mday, 1);
    EXPECT_EQ(now.tm_hour, 0);
    EXPECT_EQ(now.tm_min, 0);
    EXPECT_EQ(now.tm_sec, 0);
    EXPECT_EQ(now.tm_yday, 0);
    EXPECT_EQ(now.tm_wday, 6) << "a Saturday";
}

TEST_F(virtual_calendar_test, goes_with_the_clock) {
    EXPECT_EQ(at(0), (std::array{1, 0, 0, 0}));
    EXPECT_EQ(at(second - 5), (std::array{1, 0, 0, 0})) << "a part of a second does not count";
    EXPECT_EQ(at(second), (std::array{1, 0, 0, 1}));
    EXPECT_EQ(at(minute - 5), (std::array{1, 0, 0, 59}));
    EXPECT_EQ(at(minute), (std::array{1, 0, 1, 0}));
    EXPECT_EQ(at(hour), (std::array{1, 1, 0, 0}));
    EXPECT_EQ(at(13 * hour + 2 * minute + 3 * second), (std::array{1, 13, 2, 3}));
}

TEST_F(virtual_calendar_test, goes_on_behind_midnight) {
    EXPECT_EQ(at(day - 5), (std::array{1, 23, 59, 59}));
    EXPECT_EQ(at(day), (std::array{2, 0, 0, 0}));
    const std::tm now = dates.now();
    EXPECT_EQ(now.tm_yday, 1);
    EXPECT_EQ(now.tm_wday, 0);
}

TEST_F(virtual_calendar_test, stands_still_while_the_clock_does) {
    run_to(5 * second);
    EXPECT_EQ(dates.now().tm_sec, 5);
    EXPECT_EQ(dates.now().tm_sec, 5);
}

} // namespace
} // namespace desk::robot
