#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace desk::cli {

/// A used step of the autorun list.
struct autorun_step {
    int step = 0;    ///< 1 to 32
    int timing = 0;  ///< a row of the catalogue
    int pattern = 0; ///< a row of the catalogue
    int seconds = 0;
    bool operator==(const autorun_step&) const = default;
};

/// What a file can name.
struct autorun_limits {
    int steps = 0;
    int timings = 0;
    int patterns = 0;
    std::vector<int> seconds;
};

/// A bad line of such a file: "line 3: ...".
class csv_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A header line "step,timing,pattern,seconds" and a line for each step.
std::string csv_of(const std::vector<autorun_step>& steps);

/// Reads such a text, with any line ends; skips empty lines. Throws csv_error for the first bad line: wrong header, not
/// four numbers, a number out of its range, a step for the second time.
std::vector<autorun_step> steps_of_csv(std::string_view text, const autorun_limits& limits);

} // namespace desk::cli
