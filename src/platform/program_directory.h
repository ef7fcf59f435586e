#pragma once

#include <filesystem>

namespace desk {

/// The program's own directory, with its settings, its catalogue and rescued files: the folder of the program file,
/// or a folder of this user if the program is installed. Throws failure::path_file_access_error or
/// failure::file_not_found if it is not available.
std::filesystem::path program_directory();

/// This user's folder for the desk's data, whether or not the program uses it as its own directory; created on
/// demand, for the user alone. Throws failure::path_file_access_error if it is not available.
std::filesystem::path user_data_directory();

} // namespace desk
