#pragma once

#include <chrono>
#include <string_view>

namespace desk {

/// Ends suspended procedures when the program is over. Only the pump throws it, and only the adapters' event boundary
/// catches it. It is not a run-time failure, so no armed handler catches it.
struct program_over {};

/// The step of the desk's clock. The rounds of an exchange are counted by this clock: with finer steps a try would end
/// before 768 characters have arrived.
inline constexpr std::chrono::milliseconds clock_step{5};

/// The clock and the pending events, on the desk's only thread.
class event_pump {
public:
    virtual ~event_pump() = default;

    /// A multiple of `clock_step`.
    virtual std::chrono::milliseconds clock_time() = 0;

    /// Runs pending events once. Throws program_over if the program has ended meanwhile.
    virtual void pump() = 0;

    /// Does the same; if nothing is pending, it may sleep until the next clock step or event.
    virtual void pump_and_rest() = 0;

    /// One turn of a wait that neither pumps events nor has a limit. `waiting_for` names the event, in case it never
    /// comes.
    virtual void turn_without_progress(std::string_view waiting_for) = 0;
};

} // namespace desk
