#pragma once

#include "platform/serial_port.h"

#include <filesystem>
#include <memory>

namespace desk {

/// The system's serial ports. On POSIX systems port n is the target of the link `com<n>` in `program_directory`, or
/// else /dev/ttyS<n-1>; on Windows it is COM<n>.
std::unique_ptr<serial_port> make_native_serial_port(const std::filesystem::path& program_directory);

} // namespace desk
