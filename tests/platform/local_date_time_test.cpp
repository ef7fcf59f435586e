#include "platform/local_date_time.h"
#include "platform/numeric_date.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace desk {
namespace {

std::tm moment_at(int year, int month, int day, int hour, int minute, int second) {
    std::tm moment{};
    moment.tm_year = year - 1900;
    moment.tm_mon = month - 1;
    moment.tm_mday = day;
    moment.tm_hour = hour;
    moment.tm_min = minute;
    moment.tm_sec = second;
    moment.tm_isdst = -1;
    std::mktime(&moment);
    return moment;
}

// The words come from the system; these rules hold in any locale.

TEST(date_text, holds_year_and_day) {
    const std::string text = date_text(moment_at(2006, 11, 23, 4, 5, 7));
    EXPECT_NE(text.find("06"), std::string::npos) << text;
    EXPECT_NE(text.find("23"), std::string::npos) << text;
}

TEST(in_character_set, keeps_a_text_that_has_a_byte_for_each_character) {
    const std::tm moment = moment_at(2006, 11, 23, 4, 5, 7);
    for (const char* text : {"23.11.2006",
                             "23 d\xC3\xA9"
                             "c. 2006",
                             "?"})
        EXPECT_EQ(in_character_set(text, numeric_date_format, moment), text);
}

TEST(in_character_set, is_in_digits_otherwise) {
    const std::tm moment = moment_at(2006, 11, 23, 4, 5, 7);
    // digits of Persian, and the Japanese character for a year
    for (const char* text : {"\xDB\xB1\xDB\xB3\xDB\xB8\xDB\xB5", "2006\xE5\xB9\xB4"}) {
        EXPECT_EQ(in_character_set(text, numeric_date_format, moment), "2006-11-23");
        EXPECT_EQ(in_character_set(text, numeric_time_format, moment), "04:05:07");
    }
}

TEST(date_text, differs_with_day_month_and_year) {
    const std::string text = date_text(moment_at(2006, 11, 23, 4, 5, 7));
    EXPECT_NE(date_text(moment_at(2006, 11, 24, 4, 5, 7)), text);
    EXPECT_NE(date_text(moment_at(2006, 12, 23, 4, 5, 7)), text);
    EXPECT_NE(date_text(moment_at(2007, 11, 23, 4, 5, 7)), text);
}

TEST(date_text, does_not_depend_on_the_time_of_day) {
    EXPECT_EQ(date_text(moment_at(2006, 11, 23, 4, 5, 7)), date_text(moment_at(2006, 11, 23, 16, 45, 59)));
}

TEST(time_text, holds_minute_and_second) {
    const std::string text = time_text(moment_at(2006, 11, 23, 4, 35, 47));
    EXPECT_NE(text.find("35"), std::string::npos) << text;
    EXPECT_NE(text.find("47"), std::string::npos) << text;
}

TEST(time_text, differs_with_hour_minute_and_second) {
    const std::string text = time_text(moment_at(2006, 11, 23, 4, 35, 47));
    EXPECT_NE(time_text(moment_at(2006, 11, 23, 5, 35, 47)), text);
    EXPECT_NE(time_text(moment_at(2006, 11, 23, 16, 35, 47)), text) << "morning and afternoon";
    EXPECT_NE(time_text(moment_at(2006, 11, 23, 4, 36, 47)), text);
    EXPECT_NE(time_text(moment_at(2006, 11, 23, 4, 35, 48)), text);
}

TEST(time_text, does_not_depend_on_the_date) {
    EXPECT_EQ(time_text(moment_at(2006, 11, 23, 4, 35, 47)), time_text(moment_at(2026, 1, 2, 4, 35, 47)));
}

TEST(local_calendar, follows_the_machines_clock) {
    local_calendar dates;
    const std::time_t before = std::time(nullptr);
    std::tm now = dates.now();
    const std::time_t given = std::mktime(&now);
    const std::time_t after = std::time(nullptr);
    EXPECT_GE(given, before);
    EXPECT_LE(given, after);
}

} // namespace
} // namespace desk
