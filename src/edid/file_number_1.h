#pragma once

#include <string>
#include <string_view>

namespace desk {

/// The one file number under which EDID files are read and written.
/// The desk behaves so: a reader that fails between opening and closing leaves the number open, and every later opening
/// fails with failure::file_already_open until the program is started again.
class file_number_1 {
public:
    /// Opens a file and gives what it holds; it stays open until `close`. Throws failure::file_already_open; what
    /// can't be opened throws failure::file_not_found or failure::path_file_access_error and opens nothing.
    std::string open_for_reading(const std::string& path);
    void close() { open_ = false; }

    /// Opens a file, replaces it whole and closes it. Throws failure::file_already_open, or
    /// failure::path_file_access_error, which leaves an old file as it was.
    void replace(const std::string& path, std::string_view bytes) const;
    /// Opens a file, writes from its first byte on without cutting it, and closes it. Throws the same, and
    /// leaves an old file as it was.
    void write_over(const std::string& path, std::string_view bytes) const;

private:
    void check_free(const std::string& path) const;

    bool open_ = false;
};

} // namespace desk
