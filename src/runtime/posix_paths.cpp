#include "runtime/files.h"

namespace desk {

// names are bytes here, whatever they mean
std::filesystem::path path_from_utf8(std::string_view text) { return std::string(text); }

std::string utf8_from_path(const std::filesystem::path& path) { return path.string(); }

} // namespace desk
