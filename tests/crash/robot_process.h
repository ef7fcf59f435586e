#pragma once

#include "crash/saving_desk.h"

#include <cstddef>
#include <functional>
#include <string>

#include <sys/types.h>

namespace desk::test {

/// desk_robot as a separate process that runs the script of a saving desk.
class robot_process {
public:
    /// A traced one waits for `run_to_call` before it does anything.
    explicit robot_process(const saving_desk& desk, bool traced = false);
    ~robot_process() { kill(); }
    robot_process(const robot_process&) = delete;
    robot_process& operator=(const robot_process&) = delete;

    /// Kills it, like a power switch; returns when it is gone.
    void kill();
    void wait();

    /// Runs it up to its next system call that changes files, and returns the call's name; empty: it has ended.
    std::string run_to_call();

    /// Number of lines answered.
    std::size_t answered() const;

private:
    void start(bool traced) const;

    const saving_desk& desk_;
    pid_t child_ = -1;
};

} // namespace desk::test
