#pragma once

#include "runtime/bytes.h"

#include <filesystem>
#include <memory>

namespace desk::gui {

/// The generator's end of the line at port 1 of a desk. When it is destroyed the desk gets a hang-up, and the port
/// leads to no device.
class own_line {
public:
    virtual ~own_line() = default;

    /// Some of the bytes that the desk has written; waits for them for a few milliseconds.
    virtual bytes read() = 0;
    virtual void write(const bytes& data) = 0;
};

/// Makes a line for the desk in `folder`: a pseudo terminal or a pipe.
std::unique_ptr<own_line> make_own_line(const std::filesystem::path& folder);

/// Delays this thread's events while the system delays such lines, for the lifetime of the result.
std::shared_ptr<void> pace_of_own_lines();

} // namespace desk::gui
