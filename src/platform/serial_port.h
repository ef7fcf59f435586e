#pragma once

#include "runtime/bytes.h"

namespace desk {

/// One RS232 port at 19200 baud, no parity, 8 data bits, 1 stop bit, no flow control; polled, never blocking. Once a
/// device has vanished, both counts are 0 and written data is lost.
class serial_port {
public:
    virtual ~serial_port() = default;

    /// Opens port `number` (1 to 8). Throws failure::path_file_access_error if it can't be opened or configured.
    virtual void open(int number) = 0;
    virtual void close() = 0;

    /// Bytes waiting to be read.
    virtual std::size_t in_count() = 0;
    /// Bytes written and not yet sent.
    virtual std::size_t out_count() = 0;
    virtual void discard_input() = 0;
    virtual void discard_output() = 0;
    virtual bytes read() = 0;
    virtual void write(const bytes& data) = 0;

    /// Whether the open device has vanished.
    virtual bool vanished() { return false; }
};

} // namespace desk
