#pragma once

#include <string>
#include <string_view>

namespace desk {

/// A file's name with all letters that may stand for each other written alike: names that give the same text can lead
/// to the same file.
std::string alike_name(std::string_view name);

} // namespace desk
