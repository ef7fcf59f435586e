#include "platform/local_date_time.h"
#include "platform/numeric_date.h"
#include "runtime/windows_api.h"

#include <array>

namespace desk {

namespace {

SYSTEMTIME system_time_of(const std::tm& moment) {
    SYSTEMTIME t{};
    t.wYear = static_cast<WORD>(moment.tm_year + 1900);
    t.wMonth = static_cast<WORD>(moment.tm_mon + 1);
    t.wDay = static_cast<WORD>(moment.tm_mday);
    t.wDayOfWeek = static_cast<WORD>(moment.tm_wday);
    t.wHour = static_cast<WORD>(moment.tm_hour);
    t.wMinute = static_cast<WORD>(moment.tm_min);
    t.wSecond = static_cast<WORD>(moment.tm_sec > 59 ? 59 : moment.tm_sec);
    return t;
}

using wide_text = std::array<wchar_t, 128>;

/// `length` includes the terminating zero; 0 is a failure.
std::string utf8_of(const wide_text& text, int length) {
    if (length <= 1) return "";
    const int wanted = WideCharToMultiByte(CP_UTF8, 0, text.data(), length - 1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(wanted), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length - 1, result.data(), wanted, nullptr, nullptr);
    return result;
}

} // namespace

std::tm local_calendar::now() {
    const std::time_t now = std::time(nullptr);
    std::tm moment{};
    localtime_s(&moment, &now);
    return moment;
}

std::string date_text(const std::tm& moment) {
    const SYSTEMTIME t = system_time_of(moment);
    wide_text text{};
    const int length = GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &t, nullptr, text.data(),
                                       static_cast<int>(text.size()), nullptr);
    return in_character_set(utf8_of(text, length), numeric_date_format, moment);
}

std::string time_text(const std::tm& moment) {
    const SYSTEMTIME t = system_time_of(moment);
    wide_text text{};
    const int length =
        GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &t, nullptr, text.data(), static_cast<int>(text.size()));
    return in_character_set(utf8_of(text, length), numeric_time_format, moment);
}

} // namespace desk
