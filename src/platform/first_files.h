#pragma once

#include <filesystem>
#include <functional>
#include <optional>

namespace desk {

/// `folder`, which holds the initial copies of both ini files, if it exists and the program is installed: a program
/// with either file beside it works from its own folder.
std::optional<std::filesystem::path> first_files_in(const std::filesystem::path& folder,
                                                    const std::filesystem::path& program_folder);

/// Copies the initial files that `own_directory` lacks; calls `created` with each copy. Throws
/// failure::path_file_access_error or failure::file_not_found; leaves no partial file.
void copy_missing_first_files(const std::filesystem::path& own_directory, const std::filesystem::path& first_files,
                              const std::function<void(const std::filesystem::path&)>& created = {});

} // namespace desk
