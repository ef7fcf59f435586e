#pragma once

#include "runtime/disk.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace desk {

/// A path from UTF-8 text, and back.
std::filesystem::path path_from_utf8(std::string_view text);
std::string utf8_from_path(const std::filesystem::path& path);

/// The length of the longest file that is read, in bytes.
inline constexpr std::size_t longest_file = std::size_t{16} * 1024 * 1024;

/// Reads a regular file of at most `longest_file` bytes; links are followed. Throws failure::file_not_found where there
/// is none, and failure::path_file_access_error for anything else that can't be read: a folder, a longer file, a device
/// or a pipe, which are not opened.
std::string read_whole_file(const std::filesystem::path& path);

/// Reads the first bytes of a regular file, `most` of them at most. Throws the same.
std::string read_start_of_file(const std::filesystem::path& path, std::size_t most);

/// Replaces a regular file by `bytes`, or creates it. The new file is written beside the old one under another name and
/// renamed over it, so that the name leads to the old or the new content at any moment, never to half of one. A link
/// stays a link. The new file has the owner, group, access list and mode of the old one.
/// The file is written over in place if the folder takes no new file, if the new file can't have what the old one has,
/// or if the old one has more than one name; then a program killed in the middle leaves a mixture.
/// Throws failure::path_file_access_error and leaves the old file; a device, a pipe or a folder is not opened.
void replace_whole_file(const std::filesystem::path& path, std::string_view bytes,
                        outlives worst = outlives::power_loss);

/// Removes the files that killed programs have left in a folder before they could be renamed. replace_whole_file does
/// so itself for what outlives the loss of power.
void remove_left_behind(const std::filesystem::path& folder);

/// Writes `bytes` over the first bytes of a file; a longer one keeps its tail, a missing one is created. The file is
/// replaced whole, as above. Throws failure::path_file_access_error and leaves the old file.
void write_over_file(const std::filesystem::path& path, std::string_view bytes);

} // namespace desk
