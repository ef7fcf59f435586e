#pragma once

#include "generator/answer.h"
#include "runtime/bytes.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace desk {

/// One direction of the line at 19200 baud: when each byte of what is sent has arrived. Times are nanoseconds of one
/// clock that never goes back.
class paced_line {
public:
    /// Ten bit times: a start bit, eight data bits and a stop bit.
    static constexpr std::int64_t byte_ns = 520833;

    /// Sends the parts one behind the other from `start_ns` on, which is no earlier than that of the call before. Each
    /// answer keeps its own time: a pause of one holds up no other, and bytes of two wait for each other only while
    /// they are on the line. A part without bytes is a pause only.
    void send(const answer& parts, std::int64_t start_ns);

    /// Every byte that has arrived until now and was not taken yet.
    bytes take_until(std::int64_t now_ns);

    /// The parts whose last byte has arrived until now and that were not taken yet, in order. Independent of
    /// `take_until`.
    std::vector<bytes> take_finished_parts(std::int64_t now_ns);

    /// When the first byte that was not taken arrives, or none where the line is empty.
    std::optional<std::int64_t> next_arrival_ns() const;

    /// When the last byte of all that was sent has arrived.
    std::int64_t free_ns() const;

    /// Loses what is on the line.
    void clear();

private:
    struct timed_byte {
        std::int64_t at_ns;
        std::uint8_t value;
    };
    struct timed_part {
        std::int64_t end_ns;
        bytes data;
    };
    /// What of an answer has not begun yet.
    struct waiting_answer {
        std::int64_t start_ns; // of its next part, if the line is free then
        std::deque<bytes> parts;
        std::deque<std::int64_t> pauses_ns; // behind each part but the last
    };

    void begin_parts(std::int64_t now_ns);
    std::deque<waiting_answer>::iterator next_waiting();

    std::deque<waiting_answer> waiting_;
    std::deque<timed_byte> bytes_;
    std::deque<timed_part> parts_;
    std::int64_t free_ns_ = 0; // when the last byte of the parts that have begun arrives
};

} // namespace desk
