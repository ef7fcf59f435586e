#pragma once

#include <filesystem>

namespace desk {

/// The program's own directory, where its settings, its catalogue and what it rescues stand: the one of the program's
/// file, or a folder of this user's where the program is installed for all users of the machine. Throws
/// failure::path_file_access_error or failure::file_not_found where that folder can't be had.
std::filesystem::path program_directory();

/// This user's own folder for the desk's data, whether or not the program works there; created if need be, for the user
/// alone. Throws failure::path_file_access_error where it can't be had.
std::filesystem::path user_data_directory();

} // namespace desk
