#pragma once

#include "platform/serial_port.h"

#include <filesystem>
#include <memory>

namespace desk {

/// The serial ports of the system. On POSIX systems port n is the terminal that `com<n>` in `program_directory` leads
/// to, and where there is none /dev/ttyS<n-1>; on Windows it is COM<n>.
std::unique_ptr<serial_port> make_native_serial_port(const std::filesystem::path& program_directory);

} // namespace desk
