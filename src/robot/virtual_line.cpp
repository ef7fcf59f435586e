#include "robot/virtual_line.h"

#include "robot/tokens.h"
#include "runtime/failure.h"

#include <algorithm>
#include <optional>

namespace desk::robot {

namespace {

std::string log_text(const char* direction, std::string_view data) {
    const bool printable = std::all_of(data.begin(), data.end(), [](char c) { return c >= 0x20 && c <= 0x7E; });
    return direction + (printable ? std::string(data) : "hex:" + hex_of_bytes(data));
}

} // namespace

void virtual_line::set_port(int number, port_state state) {
    states_.at(static_cast<std::size_t>(number)) = state;
    back_at_.at(static_cast<std::size_t>(number)) = {};
    if (number == open_ && state == port_state::gone) lose_device();
}

void virtual_line::lose_device() {
    let_arrive();
    vanished_ = true;
    waiting_.clear();
    unsent_ = 0;
    from_generator_.clear();
}

void virtual_line::pull_cable_by_chance() {
    const std::optional<std::chrono::milliseconds> absence = faulty.take_absence();
    if (!absence) return;
    back_at_.at(static_cast<std::size_t>(open_)) = events_.clock_time() + *absence;
    lose_device();
}

void virtual_line::say(const answer& parts) {
    if (alive()) from_generator_.send(parts, now());
}

void virtual_line::unplug() {
    let_arrive();
    close();
    from_generator_ = {};
    to_generator_free_at_ = {};
    back_at_.fill({});
}

void virtual_line::open(int number) {
    close();
    const bool there = number >= 1 && number <= 8;
    if (!there || states_.at(static_cast<std::size_t>(number)) == port_state::missing ||
        states_.at(static_cast<std::size_t>(number)) == port_state::gone ||
        events_.clock_time() < back_at_.at(static_cast<std::size_t>(number)))
        throw runtime_failure(failure::path_file_access_error, "COM" + std::to_string(number) + " can't be opened");
    open_ = number;
    // bytes on their way to another port do not arrive at this one
    if (number != cable_in_) from_generator_.clear();
    cable_in_ = number;
}

void virtual_line::close() {
    let_arrive();
    open_ = 0;
    vanished_ = false;
    waiting_.clear();
    unsent_ = 0;
    raw_command_.clear();
    raw_block_.clear();
}

std::size_t virtual_line::in_count() {
    let_arrive();
    return waiting_.size();
}

// the port drains at once, since the clock does not advance while the desk waits for that
std::size_t virtual_line::out_count() { return alive() && state() == port_state::stuck ? unsent_ : 0; }

void virtual_line::discard_input() {
    let_arrive();
    waiting_.clear();
}

bytes virtual_line::read() {
    let_arrive();
    bytes data;
    data.swap(waiting_);
    return data;
}

void virtual_line::write(const bytes& data) {
    if (open_ == 0) return;
    let_arrive();
    // a write to a device that is gone is lost, but logged
    log_write(data);
    if (!alive()) return;
    if (state() == port_state::stuck) {
        unsent_ += data.size();
        return;
    }
    to_generator_free_at_ = std::max(to_generator_free_at_, now()) + data.size() * paced_line::byte_time;
    deliver(data, to_generator_free_at_);
    pull_cable_by_chance();
}

void virtual_line::deliver(const bytes& data, paced_line::time at) {
    // the desk writes a command as six bytes at once, and a raw block as 12 bytes at once or as single bytes
    if (data.size() == 6) {
        const std::string command = string_of(data);
        const answer reply = answer_to(command);
        raw_command_.clear();
        raw_block_.clear();
        const bool answered =
            std::any_of(reply.begin(), reply.end(), [](const answer_part& p) { return !p.data.empty(); });
        if (answered && simulated_generator::raw_block_after(command) > 0) raw_command_ = command;
        from_generator_.send(reply, at);
        return;
    }
    if (raw_command_.empty()) return;
    raw_block_.insert(raw_block_.end(), data.begin(), data.end());
    if (raw_block_.size() < simulated_generator::raw_block_after(raw_command_)) return;
    from_generator_.send(answer_to_raw(raw_block_), at);
    raw_command_.clear();
    raw_block_.clear();
}

answer virtual_line::answer_to(const std::string& command) {
    if (const auto scripted = script.take(command)) return scripted->to(command);
    return simulated_answers ? faulty.command(command) : answer{};
}

answer virtual_line::answer_to_raw(const bytes& block) {
    if (const auto scripted = script.take_raw()) return scripted->to("");
    return simulated_answers ? faulty.raw_block(raw_command_, block) : answer{};
}

void virtual_line::let_arrive() {
    const bytes arrived = from_generator_.take_until(now());
    if (alive()) waiting_.insert(waiting_.end(), arrived.begin(), arrived.end());
    for (const bytes& part : from_generator_.take_finished_parts(now())) {
        if (!alive() || part.empty()) continue;
        if (!joined_.empty()) log_.push_back(log_text("> ", joined_));
        joined_.clear();
        log_.push_back(log_text("< ", string_of(part)));
    }
}

void virtual_line::log_write(const bytes& data) {
    if (data.size() == 1) {
        joined_.push_back(static_cast<char>(data[0]));
        return;
    }
    if (!joined_.empty()) log_.push_back(log_text("> ", joined_));
    joined_.clear();
    log_.push_back(log_text("> ", string_of(data)));
}

std::vector<std::string> virtual_line::take_log() {
    let_arrive();
    if (!joined_.empty()) log_.push_back(log_text("> ", joined_));
    joined_.clear();
    std::vector<std::string> log;
    log.swap(log_);
    return log;
}

} // namespace desk::robot
