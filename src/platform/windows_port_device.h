#pragma once

#include "runtime/bytes.h"

#include <memory>
#include <string>

namespace desk {

/// The device of an open port. No call waits for it; once it has vanished both counts are 0 and written data is lost.
class port_device {
public:
    virtual ~port_device() = default;
    virtual std::size_t in_count() = 0;
    virtual std::size_t out_count() = 0;
    virtual void discard_input() = 0;
    virtual void discard_output() = 0;
    virtual bytes read() = 0;
    virtual void write(const bytes& data) = 0;
    virtual bool vanished() = 0;
};

// Both throw failure::path_file_access_error if the device can't be opened.

/// A serial device, by its name: "COM12".
std::unique_ptr<port_device> open_comm_device(const std::string& name);
/// A pipe that another program serves: "\\.\pipe\name".
std::unique_ptr<port_device> open_pipe_device(const std::string& name);

} // namespace desk
