#pragma once

#include <filesystem>

namespace desk {

/// A long path as `\\?\C:\folder\file` or `\\?\UNC\server\share\file`; a short one is returned unchanged. Windows
/// accepts other long paths only where an administrator has allowed them.
std::filesystem::path without_length_limit(const std::filesystem::path& path);

} // namespace desk
