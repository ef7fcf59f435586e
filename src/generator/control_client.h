#pragma once

#include <filesystem>
#include <string>

namespace desk {

/// Sends a line to the simulator that listens at `path` and prints the reply. If the line is empty, sends the lines of
/// standard input and prints the replies as they arrive, until either side ends. Returns the program's exit status;
/// throws failure::path_file_access_error if no simulator listens there.
int send_to_simulator(const std::filesystem::path& path, const std::string& line);

} // namespace desk
