#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace desk::robot {

/// A stack beside the caller's own, on which procedures can stay suspended while the caller goes on: the caller hands a
/// question over and waits for the answer, the work waits for questions. It is a thread, but only one of the two ever
/// runs.
class second_stack {
public:
    /// `work` asks for questions with `next` and gives an answer to each, until there is none.
    explicit second_stack(std::function<void()> work);
    /// Tells the work that there are no more questions, and waits for its end.
    ~second_stack();
    second_stack(const second_stack&) = delete;
    second_stack& operator=(const second_stack&) = delete;

    /// The caller's side.
    std::string ask(std::string question);

    /// The work's side: the next question; none: it is to end.
    std::optional<std::string> next();
    void give(std::string answer);

private:
    std::mutex mutex_;
    std::condition_variable turn_;
    std::optional<std::string> question_;
    std::optional<std::string> answer_;
    bool ended_ = false;
    std::thread thread_; // last: it begins at once
};

} // namespace desk::robot
