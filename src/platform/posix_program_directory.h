#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace desk {

/// Where this user's files go, as the environment says it; empty where it says nothing.
struct user_folders {
    std::string data_home; ///< XDG_DATA_HOME
    std::string home;      ///< HOME
};

/// The folder with the first copies of both ini files that belongs to an installed program in `program_folder`; nothing
/// where the program is not installed but works from its own folder.
std::optional<std::filesystem::path> first_files_of(const std::filesystem::path& program_folder);

/// The own directory of an installed program. Throws failure::path_file_access_error where the user has no home.
std::filesystem::path own_directory_of(const user_folders& user);

/// Makes the own directory with its parents, and puts a copy of each first file there that it does not have yet. Throws
/// failure::path_file_access_error or failure::file_not_found, and leaves no half file.
void prepare_own_directory(const std::filesystem::path& own_directory, const std::filesystem::path& first_files);

} // namespace desk
