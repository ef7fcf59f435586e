#pragma once

#include "runtime/disk.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace desk {

/// Convert between paths and UTF-8 text. On Windows what is no text becomes U+FFFD.
std::filesystem::path path_from_utf8(std::string_view text);
std::string utf8_from_path(const std::filesystem::path& path);

/// The longest file that is read, in bytes.
inline constexpr std::size_t longest_file = std::size_t{16} * 1024 * 1024;

/// Reads a regular file of at most `longest_file` bytes; follows links. Throws failure::file_not_found if there is
/// none, and failure::path_file_access_error for anything else that can't be read: a folder, a longer file, a device
/// or a pipe, which are not opened.
std::string read_whole_file(const std::filesystem::path& path);

/// Reads the first bytes of a regular file, `most` at most. Throws the same.
std::string read_start_of_file(const std::filesystem::path& path, std::size_t most);

/// Replaces a regular file by `bytes`, or creates it. Writes the new file beside the old one and renames it over
/// that, so the name leads to the complete old or new content at any moment. A link stays a link. The new file has
/// the owner, group, access list and mode of the old one. Writes in place if the folder accepts no new file, if the
/// new file can't get these attributes, or if the old file has more than one name; a program killed in the middle
/// then leaves a mixture. Throws failure::path_file_access_error and leaves the old file; does not open a device, a
/// pipe or a folder.
void replace_whole_file(const std::filesystem::path& path, std::string_view bytes,
                        outlives worst = outlives::power_loss);

/// Removes temporary files that killed programs have left in a folder. replace_whole_file does so itself for
/// outlives::power_loss.
void remove_left_behind(const std::filesystem::path& folder);

/// Overwrites the first bytes of a file; a longer file keeps its tail, a missing one is created. The file is replaced
/// whole, as above. Throws failure::path_file_access_error and leaves the old file.
void write_over_file(const std::filesystem::path& path, std::string_view bytes);

} // namespace desk
