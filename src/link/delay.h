#pragma once

#include "platform/event_pump.h"

namespace desk {

/// Waits until more than `s` seconds have gone by, and lets pending events run meanwhile. With 0.001 a round lasts
/// until the next step of the clock.
void delay_sec(event_pump& events, float s);

} // namespace desk
