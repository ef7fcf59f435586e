#pragma once

#include <string>
#include <string_view>

namespace desk {

/// The single file number under which EDID files are read and written.
/// Intended: a reader that fails between opening and closing leaves the number open, and until the program restarts
/// every attempt to open a file fails with failure::file_already_open.
class file_number_1 {
public:
    /// Opens a file, which stays open until `close`, and returns its content. Throws failure::file_already_open; if the
    /// file can't be opened, throws failure::file_not_found or failure::path_file_access_error and leaves the number
    /// free.
    std::string open_for_reading(const std::string& path);
    void close() { open_ = false; }

    /// Replaces the whole file. Throws failure::file_already_open, or failure::path_file_access_error, which leaves an
    /// existing file unchanged.
    void replace(const std::string& path, std::string_view bytes) const;
    /// Overwrites the start of a file without truncating it. Throws the same, and leaves an existing file unchanged.
    void write_over(const std::string& path, std::string_view bytes) const;

private:
    void check_free(const std::string& path) const;

    bool open_ = false;
};

} // namespace desk
