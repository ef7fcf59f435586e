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
    back_at_ms_.at(static_cast<std::size_t>(number)) = 0;
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
    const std::optional<int> ms = faulty.take_absence_ms();
    if (!ms) return;
    back_at_ms_.at(static_cast<std::size_t>(open_)) = events_.clock_ms() + *ms;
    lose_device();
}

void virtual_line::say(const answer& parts) {
    if (alive()) from_generator_.send(parts, now_ns());
}

void virtual_line::unplug() {
    let_arrive();
    close();
    from_generator_ = {};
    to_generator_free_ns_ = 0;
    back_at_ms_.fill(0);
}

void virtual_line::open(int number) {
    close();
    const bool there = number >= 1 && number <= 8;
    if (!there || states_.at(static_cast<std::size_t>(number)) == port_state::missing ||
        states_.at(static_cast<std::size_t>(number)) == port_state::gone ||
        events_.clock_ms() < back_at_ms_.at(static_cast<std::size_t>(number)))
        throw runtime_failure(failure::path_file_access_error, "COM" + std::to_string(number) + " can't be opened");
    open_ = number;
    // what is still on its way to another port never comes in here
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

// what the port takes has left it at once, since the clock stands still while the desk waits for that
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
    // what is written to a device that has vanished is lost, yet it was written
    log_write(data);
    if (!alive()) return;
    if (state() == port_state::stuck) {
        unsent_ += data.size();
        return;
    }
    to_generator_free_ns_ =
        std::max(to_generator_free_ns_, now_ns()) + static_cast<std::int64_t>(data.size()) * paced_line::byte_ns;
    deliver(data, to_generator_free_ns_);
    pull_cable_by_chance();
}

void virtual_line::deliver(const bytes& data, std::int64_t at_ns) {
    // the desk writes a command as six bytes in one go, a raw block as one write of 12 bytes or as single bytes
    if (data.size() == 6) {
        const std::string command = string_of(data);
        const answer reply = answer_to(command);
        raw_command_.clear();
        raw_block_.clear();
        const bool answered =
            std::any_of(reply.begin(), reply.end(), [](const answer_part& p) { return !p.data.empty(); });
        if (answered && simulated_generator::raw_block_after(command) > 0) raw_command_ = command;
        from_generator_.send(reply, at_ns);
        return;
    }
    if (raw_command_.empty()) return;
    raw_block_.insert(raw_block_.end(), data.begin(), data.end());
    if (raw_block_.size() < simulated_generator::raw_block_after(raw_command_)) return;
    from_generator_.send(answer_to_raw(raw_block_), at_ns);
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
    const bytes arrived = from_generator_.take_until(now_ns());
    if (alive()) waiting_.insert(waiting_.end(), arrived.begin(), arrived.end());
    for (const bytes& part : from_generator_.take_finished_parts(now_ns())) {
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
