#pragma once

#include "generator/generator_on_line.h"
#include "platform/serial_port.h"

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace desk::test {

/// A port with the simulated generator at its other end, at the pace of the line.
class simulated_port final : public serial_port {
public:
    using time = std::chrono::nanoseconds;

    simulated_port(int timings, int patterns, std::function<time()> now)
        : generator(timings, patterns), now_(std::move(now)) {}

    simulated_generator generator;
    fault_injector faults{generator};
    std::vector<std::string> written; ///< each write of the desk, in order
    int opened = 0;                   ///< how often

    /// Lets everything arrive that is on the line.
    void finish() { line_.take_due(now_() + std::chrono::seconds(1)); }

    void open(int /*number*/) override { ++opened; }
    void close() override {
        arrive();
        waiting_.clear();
    }
    std::size_t in_count() override {
        arrive();
        return waiting_.size();
    }
    std::size_t out_count() override { return 0; }
    void discard_input() override {
        arrive();
        waiting_.clear();
    }
    void discard_output() override {}
    bytes read() override {
        arrive();
        return std::exchange(waiting_, {});
    }
    void write(const bytes& data) override {
        written.push_back(string_of(data));
        line_.receive(data, now_());
    }

private:
    void arrive() {
        const bytes arrived = line_.take_due(now_());
        waiting_.insert(waiting_.end(), arrived.begin(), arrived.end());
    }

    std::function<time()> now_;
    cable cable_;
    generator_on_line line_{faults, cable_};
    bytes waiting_;
};

} // namespace desk::test
