#pragma once

#include "runtime/bytes.h"

#include <string>

namespace desk {

/// A pseudo terminal as a serial line: the simulator holds one end; desks open the other by its name.
class pseudo_terminal {
public:
    /// Throws failure::path_file_access_error if the system provides none.
    pseudo_terminal();

    /// A desk on the other end gets a hang-up.
    ~pseudo_terminal();
    pseudo_terminal(const pseudo_terminal&) = delete;
    pseudo_terminal& operator=(const pseudo_terminal&) = delete;

    const std::string& name() const { return name_; }

    /// Readable when a desk has written.
    int descriptor() const { return master_; }

    /// Some of the waiting bytes; empty if there are none.
    bytes read();

    /// Bytes that the terminal does not accept, because nothing reads it, are lost, as on a real line.
    void write(const bytes& data);

    /// Readable when a desk has closed the terminal; -1 if the system can't report that.
    int close_watch() const { return watch_; }

    /// Clears the exclusive mode that a desk leaves behind if it ends without closing its port.
    void free_for_next_desk();

private:
    void close_all();

    int master_ = -1;
    int slave_ = -1; // held open to keep the line up without a desk
    int watch_ = -1;
    std::string name_;
};

} // namespace desk
