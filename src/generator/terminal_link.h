#pragma once

#include <filesystem>

namespace desk {

/// A symbolic link to a terminal, for as long as this lives. At the end it goes only if it still leads to that
/// terminal: another program may have taken the name over.
class terminal_link {
public:
    /// Makes `link` lead to `terminal`, in the place of an older link. Throws failure::path_file_access_error where
    /// that can't be done, and where `link` is something else than a symbolic link.
    terminal_link(const std::filesystem::path& link, std::filesystem::path terminal);
    ~terminal_link();
    terminal_link(const terminal_link&) = delete;
    terminal_link& operator=(const terminal_link&) = delete;

private:
    std::filesystem::path link_;
    std::filesystem::path terminal_;
};

/// Throws failure::path_file_access_error where `link` is a link to something else than a pseudo terminal: somebody has
/// set up hardware there.
void expect_no_hardware(const std::filesystem::path& link);

} // namespace desk
