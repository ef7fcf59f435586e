#pragma once

#include "generator/answer.h"
#include "runtime/bytes.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace desk {

/// One direction of the line at 19200 baud: when each byte that is sent arrives. Times are those of one clock that
/// never goes back.
class paced_line {
public:
    using time = std::chrono::nanoseconds;

    /// Ten bit times: a start bit, eight data bits and a stop bit.
    static constexpr time byte_time{520833};

    /// Sends the parts one after the other from `start` on, which is no earlier than in the previous call. Each answer
    /// keeps its own time: a pause in one delays no other, and bytes of two answers wait for each other only while they
    /// are on the line. A part without bytes is only a pause.
    void send(const answer& parts, time start);

    /// The bytes that have arrived by now and are not yet taken.
    bytes take_until(time now);

    /// The parts whose last byte has arrived by now and that are not yet taken, in order. Independent of `take_until`.
    std::vector<bytes> take_finished_parts(time now);

    /// When the first byte that is not yet taken arrives; none if the line is empty.
    std::optional<time> next_arrival() const;

    /// When the last byte of everything sent has arrived.
    time free_at() const;

    /// Discards what is on the line.
    void clear();

private:
    struct timed_byte {
        time at;
        std::uint8_t value;
    };
    struct timed_part {
        time end;
        bytes data;
    };
    /// The parts of an answer that have not begun yet.
    struct waiting_answer {
        time start; // of the next part, if the line is free then
        std::deque<bytes> parts;
        std::deque<time> pauses; // after each part but the last
    };

    void begin_parts(time now);
    std::deque<waiting_answer>::iterator next_waiting();

    std::deque<waiting_answer> waiting_;
    std::deque<timed_byte> bytes_;
    std::deque<timed_part> parts_;
    time free_at_{0}; // when the last byte of the parts that have begun arrives
};

} // namespace desk
