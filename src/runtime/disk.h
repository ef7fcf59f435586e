#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace desk {

/// What a written file survives once the call has returned. Surviving a killed program costs no time; surviving a
/// power loss costs a disk flush.
enum class outlives { killed_program, power_loss };

/// Who can open a new file.
enum class open_to {
    others, ///< the system's default
    owner,  ///< nobody else
};

// The system-dependent parts of reading and writing files: one .cpp for each system. Errors are returned as
// conditions of std::errc; std::errc::not_supported means that a name leads to something other than a regular file,
// which is then not opened.

/// What a name leads to, as std::filesystem::status reports it, at any length of the path. On Windows everything but a
/// folder is regular.
std::filesystem::file_type type_of_file(const std::filesystem::path& path);

/// Reads the first bytes of a regular file, `most` at most.
std::error_code read_file(const std::filesystem::path& path, std::size_t most, std::string& bytes);

/// Whether an existing regular file can be written, and whether it has no second name, which would keep the old
/// content if the file were replaced.
struct old_file_state {
    std::error_code error;
    bool has_one_name = true;
};
old_file_state look_at_old_file(const std::filesystem::path& path);

/// Atomically creates a file; fails if it exists. Leaves no file behind if it fails.
std::error_code write_new_file(const std::filesystem::path& path, std::string_view bytes, outlives worst, open_to whom);

/// Does the same, and gives the file the owner, group, access list and mode of `old`. Until it has them, nobody but the
/// owner can open it. Fails with std::errc::operation_not_permitted if any of them can't be given.
std::error_code write_new_file_like(const std::filesystem::path& old, const std::filesystem::path& path,
                                    std::string_view bytes, outlives worst);

/// Atomically renames a file over another one in the same folder; deletes it if that fails.
std::error_code rename_over(const std::filesystem::path& from, const std::filesystem::path& to, outlives worst);

/// Overwrites an existing regular file with `bytes` and truncates it to their length; it keeps its owner, group,
/// access list and mode. If it fails, the file holds the old bytes again.
std::error_code write_in_place(const std::filesystem::path& path, std::string_view bytes, outlives worst);

/// Keeps other programs out of a folder while they rename files there. Waits at most five seconds, and continues
/// without the lock if the file system has none.
class folder_lock {
public:
    explicit folder_lock(const std::filesystem::path& folder);
    folder_lock(const folder_lock&) = delete;
    folder_lock& operator=(const folder_lock&) = delete;
    ~folder_lock();

private:
    std::intptr_t handle_ = -1;
};

} // namespace desk
