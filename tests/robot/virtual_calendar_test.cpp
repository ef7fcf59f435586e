#include "robot/virtual_calendar.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>

namespace desk::robot {
namespace {

using namespace std::chrono_literals;

using std::chrono::milliseconds;

class virtual_calendar_test : public testing::Test {
protected:
    virtual_calendar_test() { events.start({}); }
    /// Day, hour, minute and second after this time.
    std::array<int, 4> at(milliseconds clock_time) {
        run_to(clock_time);
        const std::tm now = dates.now();
        return {now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec};
    }
    void run_to(milliseconds clock_time) { events.run_on(clock_time - events.clock_time()); }

    virtual_events events;
    virtual_calendar dates{events};
};

constexpr auto second = 1s;
constexpr auto minute = 1min;
constexpr auto hour = 1h;
constexpr auto day = 24h;

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
    EXPECT_EQ(at(0s), (std::array{1, 0, 0, 0}));
    EXPECT_EQ(at(second - 5ms), (std::array{1, 0, 0, 0})) << "a part of a second does not count";
    EXPECT_EQ(at(second), (std::array{1, 0, 0, 1}));
    EXPECT_EQ(at(minute - 5ms), (std::array{1, 0, 0, 59}));
    EXPECT_EQ(at(minute), (std::array{1, 0, 1, 0}));
    EXPECT_EQ(at(hour), (std::array{1, 1, 0, 0}));
    EXPECT_EQ(at(13 * hour + 2 * minute + 3 * second), (std::array{1, 13, 2, 3}));
}

TEST_F(virtual_calendar_test, continues_after_midnight) {
    EXPECT_EQ(at(day - 5ms), (std::array{1, 23, 59, 59}));
    EXPECT_EQ(at(day), (std::array{2, 0, 0, 0}));
    const std::tm now = dates.now();
    EXPECT_EQ(now.tm_yday, 1);
    EXPECT_EQ(now.tm_wday, 0);
}

TEST_F(virtual_calendar_test, moves_only_with_the_clock) {
    run_to(5 * second);
    EXPECT_EQ(dates.now().tm_sec, 5);
    EXPECT_EQ(dates.now().tm_sec, 5);
}

} // namespace
} // namespace desk::robot
