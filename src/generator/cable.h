#pragma once

#include <chrono>
#include <optional>

namespace desk {

/// Whether the cable between desk and generator is plugged in: the operator unplugs it for good, a random fault for a
/// while. Times are those of one clock that never goes back.
class cable {
public:
    void unplug() { unplugged_ = true; }
    void plug() { unplugged_ = false; }
    bool unplugged() const { return unplugged_; }

    /// Pulls the cable out until it comes back by itself.
    void pull_out_until(std::chrono::nanoseconds back_at) { back_at_ = back_at; }
    bool pulled_out(std::chrono::nanoseconds now) const { return back_at_ && now < *back_at_; }
    /// When the cable comes back; none unless a random fault has pulled it out and `settle` has not put it back.
    std::optional<std::chrono::nanoseconds> back_at() const { return back_at_; }
    /// Puts the cable back once its time has come.
    void settle(std::chrono::nanoseconds now) {
        if (!pulled_out(now)) back_at_.reset();
    }

private:
    bool unplugged_ = false;
    std::optional<std::chrono::nanoseconds> back_at_;
};

} // namespace desk
