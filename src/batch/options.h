#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace desk::batch {

/// What is written for each file.
enum class output_format : std::uint8_t { text, json, html };

/// The options and arguments of the command line.
struct options {
    bool help = false;
    bool version = false;
    output_format format = output_format::text;
    unsigned jobs = 0;               ///< files at a time; 0: one for each processor
    std::string output_folder;       ///< empty: standard output
    std::vector<std::string> inputs; ///< files and folders, in the order given
};

/// An invalid command line; `what` says why.
class usage_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Parses the arguments. Throws usage_error.
options options_of(const std::vector<std::string>& words);

/// The answer to --help.
extern const char* const help_text;

} // namespace desk::batch
