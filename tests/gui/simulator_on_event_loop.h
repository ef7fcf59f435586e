#pragma once

#include "simulator_program.h"

namespace desk::gui {

/// The simulated generator on a pseudo terminal, at real line speed, driven by this thread's event loop: a busy
/// machine delays desk and generator alike, so neither times out. `link` leads to the terminal.
std::unique_ptr<simulator_program> simulator_on_event_loop(const QString& link);

} // namespace desk::gui
