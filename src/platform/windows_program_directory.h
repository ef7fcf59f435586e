#pragma once

#include <filesystem>

namespace desk {

/// The own directory of the program in `program_folder`: user_data_directory() if the installer has put the folder
/// `first_files` there, with copies of the files that are missing; else `program_folder`.
std::filesystem::path own_directory_of(const std::filesystem::path& program_folder);

} // namespace desk
