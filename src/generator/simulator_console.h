#pragma once

#include "generator/cable.h"
#include "generator/fault_injector.h"
#include "generator/simulated_generator.h"

#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The operator's console of the simulator: one line, one command on the generator, its faults or its cable.
class simulator_console {
public:
    /// All three must outlive this.
    simulator_console(simulated_generator& generator, fault_injector& faults, cable& cable)
        : generator_(generator), faults_(faults), cable_(cable) {}

    /// Carries out one line ("drop 2", "sink 1 none", "help") and returns the text to show, without a line end. A line
    /// that is not understood changes nothing, and the text says why. Throws nothing.
    std::string take_line(std::string_view line);

    /// Whether `quit` has asked to end the program.
    bool quit_asked() const { return quit_asked_; }

private:
    using words = std::vector<std::string_view>;

    std::string carry_out(const words& line);
    std::string drop(const words& line);
    std::string garble(const words& line);
    std::string delay(const words& line);
    std::string shorten(const words& line);
    std::string refuse(const words& line);
    std::string faults(const words& line);
    std::string sink(const words& line);
    std::string protect(const words& line);
    std::string erase_time(const words& line);
    std::string think_time(const words& line);
    std::string state_text() const;

    simulated_generator& generator_;
    fault_injector& faults_;
    cable& cable_;
    bool quit_asked_ = false;
};

} // namespace desk
