#pragma once

#include "crash/saving_desk.h"

#include <cstddef>
#include <functional>
#include <string>

#include <sys/types.h>

namespace desk::test {

/// desk_robot as a program of its own, at work on the script of a saving desk.
class robot_process {
public:
    /// Traced, it waits for `run_to_call` before it does anything.
    explicit robot_process(const saving_desk& desk, bool traced = false);
    ~robot_process() { kill(); }
    robot_process(const robot_process&) = delete;
    robot_process& operator=(const robot_process&) = delete;

    /// Ends it at once, as a power switch does; returns when it is gone.
    void kill();
    /// Returns when it has ended by itself.
    void wait();

    /// Lets it run until it is about to do its next call of the system that changes files, and gives the name of that;
    /// empty: it has ended.
    std::string run_to_call();

    /// The lines that it has answered.
    std::size_t answered() const;

private:
    void start(bool traced) const;

    const saving_desk& desk_;
    pid_t child_ = -1;
};

} // namespace desk::test
