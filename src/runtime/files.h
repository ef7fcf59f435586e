#pragma once

#include "runtime/disk.h"

#include <cstddef>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

namespace desk {

/// A path from UTF-8 text, and back.
std::filesystem::path path_from_utf8(std::string_view text);
std::string utf8_from_path(const std::filesystem::path& path);

/// The whole of a file as bytes. Throws failure::file_not_found where there is none, and
/// failure::path_file_access_error where it can't be read, or holds more than `longest` bytes.
std::string read_whole_file(const std::filesystem::path& path,
                            std::size_t longest = std::numeric_limits<std::size_t>::max());

/// Replaces a file by `bytes`: written beside it under another name and renamed over it, so that the old or the new
/// file stands at any moment, never half of one. Throws failure::path_file_access_error and leaves the old file.
/// Where the folder lets nobody do that, but the file itself is open to writing, it is written over where it stands;
/// then a program killed in the middle leaves a mixture.
void replace_whole_file(const std::filesystem::path& path, std::string_view bytes,
                        outlives worst = outlives::power_loss);

/// Removes the files that killed programs have left in a folder before they could be renamed. replace_whole_file does
/// so itself for what outlives the loss of power.
void remove_left_behind(const std::filesystem::path& folder);

/// Puts `bytes` in the place of a file's first ones; one that is longer keeps its tail, one that is not there is made.
/// The file is replaced whole, as above. Throws failure::path_file_access_error and leaves the old file.
void write_over_file(const std::filesystem::path& path, std::string_view bytes);

} // namespace desk
