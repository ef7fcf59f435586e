#pragma once

#include <filesystem>

namespace desk {

/// A symbolic link to a pseudo terminal for the lifetime of this. At the end it is removed only if it still leads to
/// that terminal: another program may have taken over the name.
class terminal_link {
public:
    /// Makes `link` lead to `terminal`. Replaces only the link of another simulator, that is one that leads directly
    /// into /dev/pts. Throws failure::path_file_access_error if anything else has the name: any other link belongs to
    /// hardware, plugged in or not, and the reason says where it leads. Throws the same if the system refuses.
    terminal_link(const std::filesystem::path& link, std::filesystem::path terminal);
    ~terminal_link();
    terminal_link(const terminal_link&) = delete;
    terminal_link& operator=(const terminal_link&) = delete;

private:
    bool is_this(const std::filesystem::path& link) const;

    std::filesystem::path link_;
    std::filesystem::path terminal_;
};

} // namespace desk
