#pragma once

#include "generator/sim_options.h"
#include "runtime/bytes.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// What the simulator needs from the system: the line to the desk, typed input, the control channel, and a wait for
/// all of them.
class simulator_system {
public:
    virtual ~simulator_system() = default;

    /// Makes a line that a desk can open, and gives it the name LINK. Throws failure::path_file_access_error if the
    /// system provides none or the name belongs to something else.
    virtual void plug() = 0;
    /// Removes the line; a desk on it gets a hang-up.
    virtual void unplug() = 0;
    virtual bool is_plugged() const = 0;
    virtual std::string line_name() const = 0;

    /// Bytes that nobody reads are lost, as on a real line.
    virtual void write_to_desk(const bytes& data) = 0;

    struct news {
        bool end = false; ///< the program is to end
        bytes from_desk;
        std::string typed;
        bool typed_all = false; ///< nothing more will be typed
    };
    /// Waits until something arrives, for at most `longest`. Reads the line only if `reads_desk` is true.
    virtual news wait(bool reads_desk, std::optional<std::chrono::nanoseconds> longest) = 0;

    /// Whether a line of the control channel is ready; then `serve_control` carries it out.
    virtual bool control_has_line() const = 0;
    virtual void serve_control(const std::function<std::string(std::string_view line)>& reply_to) = 0;
};

/// One per program. Throws failure::path_file_access_error if the control channel can't be made.
std::unique_ptr<simulator_system> make_simulator_system(const sim_options& options);

/// LINK of port 1 of a desk in this folder.
std::filesystem::path link_of_port_1(const std::filesystem::path& folder);

} // namespace desk
