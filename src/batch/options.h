#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace desk::batch {

/// What the command line asks for.
struct options {
    bool help = false;
    bool version = false;
    unsigned jobs = 0;               ///< files at a time; 0: one for each processor
    std::string output_folder;       ///< empty: standard output
    std::vector<std::string> inputs; ///< files and folders, in the order given
};

/// A command line that makes no sense; its words tell why.
class usage_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the words behind the program's name. Throws usage_error.
options options_of(const std::vector<std::string>& words);

/// The answer to --help.
extern const char* const help_text;

} // namespace desk::batch
