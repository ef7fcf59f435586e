#pragma once

#include "generator/control_clients.h"
#include "generator/windows_served_pipe.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// Ends what a program sends at the control pipe, since a pipe can't be closed in one direction.
inline constexpr char end_of_lines = '\x04';

/// A named pipe that only this user can open. It takes lines from several programs at once and returns to each the
/// replies to its own. It never blocks.
class control_pipe {
public:
    /// Serves the pipe `path`, "\\.\pipe\name". Throws failure::path_file_access_error if the path names no pipe,
    /// another program serves it, or the system refuses.
    explicit control_pipe(const std::filesystem::path& path);

    /// Appends the events to wait for; then call `serve`.
    void add_events(std::vector<HANDLE>& events) const;

    /// Whether a line is ready.
    bool has_line() const { return clients_.has_line(); }

    /// Reads and writes without blocking, and carries out at most one line of each program.
    void serve(const std::function<std::string(std::string_view line)>& reply_to);

private:
    std::string name_;
    std::unique_ptr<served_pipe> next_; // no program has it open yet
    control_clients clients_;
};

} // namespace desk
