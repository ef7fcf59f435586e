#pragma once

#include "generator/catalogue_size.h"
#include "generator/fault_plan.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// What the simulator was started with.
struct sim_options {
    int timings = shipped_timing_count;
    int patterns = shipped_pattern_count;
    fault_plan faults;
    bool quiet = false;
    bool help = false;
    bool version = false;
    std::filesystem::path link;    ///< empty: port 1 of the desk
    std::filesystem::path control; ///< the socket where it listens for lines; empty: none
    std::filesystem::path send_to; ///< the socket of the running simulator that `line` goes to; empty: it is one itself
    std::string line;              ///< empty: the lines of standard input
};

/// Reads the command line without the program's name. Throws failure::invalid_procedure_call where it can't be
/// understood, with a reason for the user.
sim_options sim_options_of(const std::vector<std::string>& arguments);

/// The help text, with a line end at its end.
std::string_view sim_help();

} // namespace desk
