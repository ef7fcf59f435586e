#include "platform/local_date_time.h"

#include "platform/numeric_date.h"
#include "runtime/windows_1252.h"

#include <array>
#include <clocale>

namespace desk {

namespace {

/// The system's locale for dates and times, or the C locale if it is not installed.
class system_locale {
public:
    system_locale() : locale_(newlocale(LC_TIME_MASK | LC_CTYPE_MASK, "", nullptr)) {
        if (locale_ == nullptr) locale_ = newlocale(LC_ALL_MASK, "C", nullptr);
    }
    ~system_locale() { freelocale(locale_); }
    system_locale(const system_locale&) = delete;
    system_locale& operator=(const system_locale&) = delete;

    std::string text(const char* format, const std::tm& moment) const {
        std::array<char, 256> buffer{};
        return as_utf8({buffer.data(), strftime_l(buffer.data(), buffer.size(), format, &moment, locale_)});
    }

private:
    locale_t locale_;
};

std::string in_system_locale(const char* format, const std::tm& moment) {
    static const system_locale locale;
    return locale.text(format, moment);
}

} // namespace

std::tm local_calendar::now() {
    const std::time_t now = std::time(nullptr);
    std::tm moment{};
    localtime_r(&now, &moment);
    return moment;
}

std::string date_text(const std::tm& moment) {
    return in_character_set(in_system_locale("%x", moment), numeric_date_format, moment);
}

std::string time_text(const std::tm& moment) {
    return in_character_set(in_system_locale("%X", moment), numeric_time_format, moment);
}

} // namespace desk
