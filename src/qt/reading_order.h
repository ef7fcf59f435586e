#pragma once

#include "controls/window.h"

#include <vector>

namespace desk::qt {

/// The current tab stops in reading order: row by row, with the contents of a frame, and what overlaps it, read
/// together; a frame with two long texts side by side is read in layout order, one side after the other. A group of
/// option buttons is one stop. Controls covered by another frame are skipped.
std::vector<control*> tab_stops(const window& w);

/// Visible, enabled, and not covered by another frame.
bool can_be_reached(const control& c);
/// Reachable, and works with keys.
bool can_take_keys(const control& c);

/// The control of the same kind in the same frame to which the arrow keys move from `c`; wraps around.
control& neighbour(control& c, bool next);

/// The stop of a control: its group's for an option button, else itself. nullptr if there is none.
control* stop_of(const std::vector<control*>& stops, const control* c);

} // namespace desk::qt
