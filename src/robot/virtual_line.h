#pragma once

#include "generator/catalogue_size.h"
#include "generator/faulty_generator.h"
#include "generator/paced_line.h"
#include "generator/simulated_generator.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "robot/reply_script.h"

#include <array>
#include <chrono>
#include <string>
#include <vector>

namespace desk::robot {

/// The cable to a scripted generator, and the eight ports that it can be plugged into.
class virtual_line final : public serial_port {
public:
    enum class port_state { ok, missing, gone, stuck };

    explicit virtual_line(event_pump& events) : events_(events) {}

    reply_script script;
    simulated_generator simulated{shipped_timing_count, shipped_pattern_count};
    faulty_generator faulty{simulated}; ///< answers for `simulated`, with random faults
    bool simulated_answers = false;

    void set_port(int number, port_state state);

    /// The generator sends without a command.
    void say(const answer& parts);

    /// The traffic since the last call: "> " and one write of the desk, or "< " and one part of an answer.
    std::vector<std::string> take_log();

    /// Clears the line at the end of a program.
    void unplug();

    void open(int number) override;
    void close() override;
    std::size_t in_count() override;
    std::size_t out_count() override;
    void discard_input() override;
    void discard_output() override { unsent_ = 0; }
    bytes read() override;
    void write(const bytes& data) override;

private:
    paced_line::time now() { return events_.clock_time(); }
    port_state state() const { return states_.at(static_cast<std::size_t>(open_)); }
    bool alive() const { return open_ != 0 && !vanished_; }
    void let_arrive();
    void lose_device();
    void pull_cable_by_chance();
    void log_write(const bytes& data);
    void deliver(const bytes& data, paced_line::time at);
    answer answer_to(const std::string& command);
    answer answer_to_raw(const bytes& block);

    event_pump& events_;
    std::array<port_state, 9> states_{};
    std::array<std::chrono::milliseconds, 9> back_at_{}; // of ports whose cable a random fault has pulled out
    int open_ = 0;                                       // the open port; 0: none
    int cable_in_ = 0;                                   // the port opened last
    bool vanished_ = false;                              // the device of the open port is gone
    paced_line from_generator_;
    paced_line::time to_generator_free_at_{0};
    bytes waiting_;
    std::size_t unsent_ = 0;
    std::string raw_command_; // the answered command whose raw block is expected; empty: none
    bytes raw_block_;

    std::vector<std::string> log_;
    std::string joined_; // consecutive single-byte writes
};

} // namespace desk::robot
