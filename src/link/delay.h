#pragma once

#include "platform/event_pump.h"

namespace desk {

/// Waits until more than `s` seconds have passed, and runs pending events meanwhile. With 0.001 a round lasts until
/// the next clock step.
void delay_sec(event_pump& events, float s);

} // namespace desk
