#pragma once

#include "simulator_program.h"

namespace desk::gui {

/// The simulated generator on a pseudo terminal, at the line's own pace, worked by this thread's event loop: a machine
/// that holds up the desk holds up its generator and the generator's clock too, so neither runs out of patience with
/// the other. `link` leads to the terminal.
std::unique_ptr<simulator_program> simulator_on_event_loop(const QString& link);

} // namespace desk::gui
