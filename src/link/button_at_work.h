#pragma once

#include "controls/controls.h"
#include "platform/event_pump.h"

namespace desk {

/// Disables a button and turns it red while its handler talks to the generator. This alone prevents a second press,
/// since every wait runs events.
void begin_work(button& pressed, event_pump& events);

/// Enables the button and restores the button face's colour.
void end_work(button& pressed);

} // namespace desk
