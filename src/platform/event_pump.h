#pragma once

#include <cstdint>
#include <string_view>

namespace desk {

/// Ends suspended procedures when the program is over: thrown by the pump alone, caught at the faces' event boundary
/// alone. It is no run-time failure, so that no armed handler takes it.
struct program_over {};

/// The clock and the pending events, on the one thread of the desk.
class event_pump {
public:
    virtual ~event_pump() = default;

    /// Milliseconds of a clock that advances in steps of 5. A try of an exchange is counted in rounds of this clock:
    /// with finer steps it would be over before 768 characters have come in.
    virtual std::int64_t clock_ms() = 0;

    /// Lets pending events run once. Throws program_over when the program has ended meanwhile.
    virtual void pump() = 0;

    /// The same; with nothing pending it may sleep until the next step of the clock or the next event.
    virtual void pump_and_rest() = 0;

    /// One turn of a wait that neither pumps events nor has a limit. `waiting_for` tells what it waits for, should it
    /// never end.
    virtual void turn_without_progress(std::string_view waiting_for) = 0;
};

} // namespace desk
