#pragma once

#include "platform/local_date_time.h"
#include "robot/virtual_events.h"

#include <chrono>

namespace desk::robot {

/// A calendar that starts at midnight of 1 January 2000 with the program and follows the virtual clock, so that every
/// run gives the same report.
class virtual_calendar final : public calendar {
public:
    explicit virtual_calendar(virtual_events& events) : events_(events) {}

    std::tm now() override {
        using namespace std::chrono;
        const sys_seconds moment = sys_days(2000y / January / 1) + floor<seconds>(events_.clock_time());
        const sys_days day = floor<days>(moment);
        const year_month_day date(day);
        const hh_mm_ss clock(moment - day);
        std::tm t{};
        t.tm_year = static_cast<int>(date.year()) - 1900;
        t.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
        t.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
        t.tm_wday = static_cast<int>(weekday(day).c_encoding());
        t.tm_yday = static_cast<int>((day - sys_days(date.year() / January / 1)).count());
        t.tm_hour = static_cast<int>(clock.hours().count());
        t.tm_min = static_cast<int>(clock.minutes().count());
        t.tm_sec = static_cast<int>(clock.seconds().count());
        return t;
    }

private:
    virtual_events& events_;
};

} // namespace desk::robot
