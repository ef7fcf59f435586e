#pragma once

#include "runtime/bytes.h"

#include <string>

namespace desk {

/// A pseudo terminal as a serial line: the simulator holds one end, a desk opens the other by its name, any number of
/// times.
class pseudo_terminal {
public:
    /// Throws failure::path_file_access_error where the system gives none.
    pseudo_terminal();

    /// A desk on the other end sees a hang-up.
    ~pseudo_terminal();
    pseudo_terminal(const pseudo_terminal&) = delete;
    pseudo_terminal& operator=(const pseudo_terminal&) = delete;

    const std::string& name() const { return name_; }

    /// Readable when a desk has written.
    int descriptor() const { return master_; }

    /// Some of what waits; nothing where nothing does.
    bytes read();

    /// What the terminal does not take, because nobody reads it, is lost as on a real line.
    void write(const bytes& data);

    /// Readable when a desk has closed the terminal; -1 where the system can't tell.
    int close_watch() const { return watch_; }

    /// A desk that ended without closing its port leaves it marked as its own: takes that mark away.
    void free_for_next_desk();

private:
    void close_all();

    int master_ = -1;
    int slave_ = -1; // held open, so that the line stays up while no desk is there
    int watch_ = -1;
    std::string name_;
};

} // namespace desk
