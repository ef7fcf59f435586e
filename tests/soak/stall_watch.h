#pragma once

#include <atomic>
#include <chrono>
#include <thread>

namespace desk::test {

/// Notices when the whole machine stands still for a while, as a virtual one can.
class stall_watch {
public:
    using clock = std::chrono::steady_clock;

    explicit stall_watch(std::chrono::milliseconds least)
        : watcher_([this, least](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                const auto before = clock::now();
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                if (clock::now() - before > least) last_ = clock::now();
            }
        }) {}

    /// The end of the last stall.
    clock::time_point last() const { return last_; }

private:
    std::atomic<clock::time_point> last_{clock::time_point{}};
    std::jthread watcher_;
};

} // namespace desk::test
