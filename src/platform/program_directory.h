#pragma once

#include <filesystem>

namespace desk {

/// The directory that the running program's own file stands in.
std::filesystem::path program_directory();

} // namespace desk
