#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace desk {

/// This user's folders from the environment; empty if unset.
struct user_folders {
    std::string data_home; ///< XDG_DATA_HOME
    std::string home;      ///< HOME
};

/// The folder with the initial copies of both ini files, if the program in `program_folder` is installed. Nothing if
/// it works from its own folder.
std::optional<std::filesystem::path> first_files_of(const std::filesystem::path& program_folder);

/// The per-user directory of an installed program. Throws failure::path_file_access_error if the user has no home.
std::filesystem::path own_directory_of(const user_folders& user);

/// Creates the per-user directory with its parents, and copies missing initial files into it. Throws
/// failure::path_file_access_error or failure::file_not_found; leaves no partial file.
void prepare_own_directory(const std::filesystem::path& own_directory, const std::filesystem::path& first_files);

} // namespace desk
