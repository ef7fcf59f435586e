#pragma once

#include <string>
#include <string_view>

namespace desk {

/// A part of a path, split at its last backslash or slash. Part 0: everything before it. Part 1: a short form for
/// display, the first three characters, "..." and the rest from the separator on; the whole path if the separator is
/// its third character. Part 2: everything after it. Without a separator part 0 is empty and the others are the path.
std::string path_part(const std::string& path, int part);

/// A file name without its extension. A leading point belongs to the name.
std::string_view without_extension(std::string_view name);

} // namespace desk
