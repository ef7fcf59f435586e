#include "robot/second_stack.h"

#include <utility>

namespace desk::robot {

second_stack::second_stack(std::function<void()> work) : thread_(std::move(work)) {}

second_stack::~second_stack() {
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    turn_.notify_all();
    thread_.join();
}

std::string second_stack::ask(std::string question) {
    std::unique_lock lock(mutex_);
    question_ = std::move(question);
    turn_.notify_all();
    turn_.wait(lock, [this] { return answer_.has_value(); });
    return *std::exchange(answer_, std::nullopt);
}

std::optional<std::string> second_stack::next() {
    std::unique_lock lock(mutex_);
    turn_.wait(lock, [this] { return question_.has_value() || ended_; });
    return std::exchange(question_, std::nullopt);
}

void second_stack::give(std::string answer) {
    {
        const std::lock_guard lock(mutex_);
        answer_ = std::move(answer);
    }
    turn_.notify_all();
}

} // namespace desk::robot
