#include "platform/first_files.h"

#include "runtime/files.h"

#include <algorithm>
#include <array>
#include <system_error>

namespace desk {

namespace fs = std::filesystem;

namespace {

constexpr std::array first_file_names = {"marlo_rs232.ini", "timing_pattern.ini"};

/// Counts a dangling link too.
bool exists_at(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

} // namespace

std::optional<fs::path> first_files_in(const fs::path& folder, const fs::path& program_folder) {
    // a portable program keeps its files, even if it was unpacked beside such a folder
    if (std::any_of(first_file_names.begin(), first_file_names.end(),
                    [&](const char* name) { return exists_at(program_folder / name); }))
        return std::nullopt;
    std::error_code error;
    if (!fs::is_directory(folder, error)) return std::nullopt;
    return folder;
}

void copy_missing_first_files(const fs::path& own_directory, const fs::path& first_files,
                              const std::function<void(const fs::path&)>& created) {
    for (const char* name : first_file_names) {
        const fs::path copy = own_directory / name;
        if (exists_at(copy)) continue;
        replace_whole_file(copy, read_whole_file(first_files / name));
        if (created) created(copy);
    }
}

} // namespace desk
