#pragma once

#include <filesystem>

namespace desk::gui {

/// A line that nobody reads. It becomes port 1 of the desk in `folder`; create it before the desk.
class unread_line {
public:
    explicit unread_line(const std::filesystem::path& folder);
    ~unread_line();
    unread_line(const unread_line&) = delete;
    unread_line& operator=(const unread_line&) = delete;

    /// From now on it accepts nothing more.
    void fill() const;

private:
#ifdef _WIN32
    void* served_;
#else
    int master_;
    int slave_ = -1;
#endif
};

} // namespace desk::gui
