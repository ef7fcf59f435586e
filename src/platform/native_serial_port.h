#pragma once

#include "platform/serial_port.h"

#include <filesystem>
#include <memory>

namespace desk {

/// The device of port `number`. On POSIX systems it is the target of the link `com<n>` in `program_directory`, or else
/// /dev/ttyS<n-1>; on Windows it is what the file port<n>.txt there names, or else COM<n>. Throws
/// failure::path_file_access_error for a number below 1 and for a file that names no device.
std::filesystem::path device_of_port(const std::filesystem::path& program_directory, int number);

/// The system's serial ports.
std::unique_ptr<serial_port> make_native_serial_port(const std::filesystem::path& program_directory);

/// One device, by its path ("/dev/ttyUSB0") or name ("COM12", "\\.\pipe\name"), whatever number is opened.
std::unique_ptr<serial_port> make_serial_port_of(const std::filesystem::path& device);

/// The device of port `number`, whatever number is opened.
std::unique_ptr<serial_port> make_serial_port_of(const std::filesystem::path& program_directory, int number);

} // namespace desk
