#pragma once

#include "generator/catalogue_size.h"
#include "generator/fault_plan.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The command line of the simulator.
struct sim_options {
    int timings = shipped_timing_count;
    int patterns = shipped_pattern_count;
    fault_plan faults;
    bool quiet = false;
    bool help = false;
    bool version = false;
    std::filesystem::path link;    ///< empty: port 1 of the desk
    std::filesystem::path control; ///< the socket that it reads lines from; empty: none
    std::filesystem::path send_to; ///< the socket of a running simulator to send `line` to; empty: none
    std::string line;              ///< empty: the lines of standard input
};

/// Parses the command line without the program's name. Throws failure::invalid_procedure_call with a reason for the
/// user.
sim_options sim_options_of(const std::vector<std::string>& arguments);

/// The help text, with a final line end.
std::string_view sim_help();

} // namespace desk
