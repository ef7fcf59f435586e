#pragma once

#include "generator/cable.h"
#include "generator/command_stream.h"
#include "generator/fault_injector.h"
#include "generator/paced_line.h"
#include "runtime/bytes.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace desk {

/// The generator with both directions of its line at the pace of 19200 baud: bytes in, bytes out. Times are those of
/// one clock that never goes back.
class generator_on_line {
public:
    using time = std::chrono::nanoseconds;

    /// Both must outlive this.
    generator_on_line(fault_injector& generator, cable& cable) : generator_(generator), cable_(cable) {}

    /// Takes bytes that the desk has just written: they reach the generator one after the other from `now` on.
    void receive(const bytes& data, time now);

    /// Whether the line keeps up with the desk. If not, the desk has to wait.
    bool ready_for_more(time now) const;

    /// The bytes that have reached the desk by now and are not yet taken. Call it when `next_due` has come.
    bytes take_due(time now);

    /// When the next byte arrives at either end or the cable comes back; none if the line is idle.
    std::optional<time> next_due() const;

    /// The traffic since the last call, one line each: "> TIM007" from the desk, "< TIM007" to it, logged when the last
    /// byte arrives. Data that is not all printable is written as "hex:" and hexadecimal digits. "! garble" is the
    /// random fault of the next answer.
    std::vector<std::string> take_log();

    /// Discards what is on the line.
    void cut();

private:
    void hear(const bytes& data, time now);
    void answer_item(const stream_item& item, time now);
    void log_answers(time now);

    fault_injector& generator_;
    cable& cable_;
    paced_line from_desk_;
    paced_line to_desk_;
    command_stream stream_;
    std::string last_command_; // the one that a raw block belongs to
    std::vector<std::string> log_;
};

} // namespace desk
