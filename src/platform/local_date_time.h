#pragma once

#include <ctime>
#include <string>

namespace desk {

/// The local date and time.
class calendar {
public:
    virtual ~calendar() = default;
    virtual std::tm now() = 0;
};

class local_calendar final : public calendar {
public:
    std::tm now() override;
};

/// In the format of the system's locale, in UTF-8; in digits if the desk's character set lacks one of its characters.
/// A report is saved in that set.
std::string date_text(const std::tm& moment);
std::string time_text(const std::tm& moment);

} // namespace desk
