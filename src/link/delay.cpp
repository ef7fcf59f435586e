#include "link/delay.h"

namespace desk {

void delay_sec(event_pump& events, float s) {
    const std::int64_t start = events.clock_ms();
    const auto elapsed = [&] { return static_cast<float>(static_cast<double>(events.clock_ms() - start) / 1000); };
    if (elapsed() > s) return;
    do {
        events.pump_and_rest();
    } while (!(elapsed() > s));
}

} // namespace desk
