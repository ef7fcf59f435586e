#pragma once

#include "generator/command_stream.h"
#include "generator/misbehaviour.h"
#include "generator/paced_line.h"
#include "runtime/bytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace desk {

/// The generator with both directions of its line at the pace of 19200 baud: bytes in, bytes out. Times are
/// nanoseconds of one clock that never goes back.
class generator_on_line {
public:
    /// `generator` must live as long as this.
    explicit generator_on_line(misbehaviour& generator) : generator_(generator) {}

    /// Bytes that the desk has just written: they reach the generator one after the other from `now_ns` on.
    void receive(const bytes& data, std::int64_t now_ns);

    /// Whether the line keeps up with the desk: a desk that writes faster than the line has to wait.
    bool ready_for_more(std::int64_t now_ns) const;

    /// What must have reached the desk by now and was not taken yet. Call it whenever `next_due_ns` has come.
    bytes take_due(std::int64_t now_ns);

    /// When a byte arrives at either end next or the cable comes back, or none where the line is idle.
    std::optional<std::int64_t> next_due_ns() const;

    /// The traffic since the last call, a line each: "> TIM007" from the desk, "< TIM007" to it, once the last byte
    /// has arrived. What is not all printable stands as "hex:" and hexadecimal digits. "! garble" is what chance does
    /// to the answer that is to come.
    std::vector<std::string> take_log();

    /// The cable is out: what was on the line is lost.
    void cut();

    /// Whether chance has pulled the cable out and not put it back yet.
    bool absent(std::int64_t now_ns) const { return absent_until_ns_ && now_ns < *absent_until_ns_; }

private:
    void hear(const bytes& data, std::int64_t now_ns);
    void answer_item(const stream_item& item, std::int64_t now_ns);
    void log_answers(std::int64_t now_ns);

    misbehaviour& generator_;
    paced_line from_desk_;
    paced_line to_desk_;
    command_stream stream_;
    std::string last_command_; // the one that a raw block belongs to
    std::optional<std::int64_t> absent_until_ns_;
    std::vector<std::string> log_;
};

} // namespace desk
