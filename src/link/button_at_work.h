#pragma once

#include "controls/controls.h"
#include "platform/event_pump.h"

namespace desk {

/// A button whose handler talks to the generator is dead and red meanwhile: the one thing that keeps a second press of
/// it out, since every wait lets events run.
void begin_work(button& pressed, event_pump& events);

/// The button rests again: the button face's colour, enabled.
void end_work(button& pressed);

} // namespace desk
