#pragma once

#include "robot/robot.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace desk::test {

/// The robot as a function from a line to its answer. The robot nests, so it runs on its own thread; only one of
/// the two threads ever runs.
class robot_at_hand {
public:
    explicit robot_at_hand(std::filesystem::path program_directory)
        : robot_(
              std::move(program_directory), [this] { return wait_for_line(); },
              [this](const std::string& answer) { answer_ = answer; })
        , thread_([this] { serve(); }) {
        std::unique_lock lock(mutex_);
        wait_for_robot(lock);
    }
    /// Ends the robot's input.
    ~robot_at_hand() {
        {
            const std::lock_guard lock(mutex_);
            line_.reset();
            robot_runs_ = true;
        }
        turn_.notify_all();
        thread_.join();
    }
    robot_at_hand(const robot_at_hand&) = delete;
    robot_at_hand& operator=(const robot_at_hand&) = delete;

    /// Empty for a line without an answer, and once the robot has finished.
    std::string answer(std::string_view line) {
        std::unique_lock lock(mutex_);
        if (finished_) return "";
        line_ = line;
        robot_runs_ = true;
        turn_.notify_all();
        wait_for_robot(lock);
        return std::exchange(answer_, "");
    }

    /// Whether `quit` has ended the robot.
    bool finished() const { return finished_; }

private:
    void wait_for_robot(std::unique_lock<std::mutex>& lock) {
        turn_.wait(lock, [this] { return !robot_runs_; });
    }

    std::optional<std::string> wait_for_line() {
        std::unique_lock lock(mutex_);
        robot_runs_ = false;
        turn_.notify_all();
        turn_.wait(lock, [this] { return robot_runs_; });
        return line_;
    }

    void serve() {
        robot_.serve_operator();
        {
            const std::lock_guard lock(mutex_);
            finished_ = true;
            robot_runs_ = false;
        }
        turn_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable turn_;
    bool robot_runs_ = true;
    bool finished_ = false;
    std::optional<std::string> line_; // none: the end of the input
    std::string answer_;
    robot::robot robot_;
    std::thread thread_; // last: it uses the others at once
};

} // namespace desk::test
