#pragma once

#include <ctime>
#include <string>

namespace desk {

/// The date and the time of day where the desk runs.
class calendar {
public:
    virtual ~calendar() = default;
    virtual std::tm now() = 0;
};

/// The machine's own.
class local_calendar final : public calendar {
public:
    std::tm now() override;
};

/// As the system's locale prints them, in UTF-8.
std::string date_text(const std::tm& moment);
std::string time_text(const std::tm& moment);

} // namespace desk
