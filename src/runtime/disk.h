#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace desk {

/// What a written file outlives once the writing has returned. A killed program costs no time; the loss of power costs
/// the time that the disk takes.
enum class outlives { killed_program, power_loss };

// What differs from system to system in writing files: one .cpp each. Errors come back as conditions of std::errc.

/// Makes a file of a name that no file has, in one step; where it fails, none is left behind.
std::error_code write_new_file(const std::filesystem::path& path, std::string_view bytes, outlives worst);

/// Gives a file the name of another in its folder, in the place of that one, in one step.
std::error_code rename_over(const std::filesystem::path& from, const std::filesystem::path& to, outlives worst);

/// Waits until a file that was written is on the disk.
std::error_code flush_to_disk(const std::filesystem::path& path);

} // namespace desk
