#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

// The file port<n>.txt beside the settings: it names the device of port n on Windows, in one line. Windows would take
// a file com<n>.txt for the device COM<n>.

std::filesystem::path port_file(const std::filesystem::path& folder, int number);

/// The device that the content of a port file names: "COM12", or a pipe of this computer as "\\.\pipe\name". Case,
/// spaces around the name and a byte order mark do not matter. Throws failure::path_file_access_error with the reason.
std::string device_named_by(std::string_view content);

/// The device that this file names; nothing if the file does not exist. Throws failure::path_file_access_error if it
/// can't be read or names no device.
std::optional<std::string> device_of_port_file(const std::filesystem::path& file);

/// Whether the device is a pipe.
bool is_pipe(std::string_view device);

} // namespace desk
