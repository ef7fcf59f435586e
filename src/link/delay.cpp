#include "link/delay.h"

namespace desk {

void delay_sec(event_pump& events, float s) {
    const std::chrono::milliseconds start = events.clock_time();
    const auto elapsed = [&] {
        return static_cast<float>(std::chrono::duration<double>(events.clock_time() - start).count());
    };
    if (elapsed() > s) return;
    do {
        events.pump_and_rest();
    } while (!(elapsed() > s));
}

} // namespace desk
