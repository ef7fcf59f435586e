#pragma once

#include "runtime/bytes.h"

#include <array>
#include <filesystem>
#include <map>
#include <string>

namespace desk::test {

/// What velotrace_sim holds, in the numbers of the commands.
struct simulator_memory {
    int timing = 0;
    int pattern = 0;
    int output = 0; ///< 1 to 4
    int hdcp = 0;
    int audio = 0; ///< 1 to 3, and the next three
    int lpcm = 0;
    int color_space = 0;
    int deep_color = 0;
    std::array<int, 3> colors{};
    int autorun = 0;
    int autorun_steps = 0; ///< in use
    int favorite = 0;
    int favorite_timings = 0; ///< ticked
    int favorite_patterns = 0;
    std::string custom_string;
    std::map<std::string, int> faults; ///< so far, by kind

    bool operator==(const simulator_memory&) const = default;
};

/// The control socket of a running simulator.
class simulator_control {
public:
    explicit simulator_control(std::filesystem::path socket) : socket_(std::move(socket)) {}

    /// Sends a line and returns the reply. Throws std::runtime_error if the simulator does not answer.
    std::string send(const std::string& line) const;

    simulator_memory memory() const;
    /// Empty: there is no sink.
    bytes sink(int number) const;

private:
    std::filesystem::path socket_;
};

} // namespace desk::test
