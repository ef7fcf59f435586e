#pragma once

#include "controls/window.h"

#include <vector>

namespace desk::qt {

/// The controls that the tab key stops at now, in the order they are read: row by row, what lies in or over a frame as
/// one with the frame; a frame with two long texts beside each other in the order of the layout, one side after the
/// other. A group of option buttons is one stop. What another frame covers is none.
std::vector<control*> tab_stops(const window& w);

/// On show, enabled, and not covered by another frame.
bool can_be_reached(const control& c);
/// Of those, one that keys work.
bool can_take_keys(const control& c);

/// The control of the same kind in the same frame that the arrow keys go to from `c`; after the last one comes the
/// first.
control& neighbour(control& c, bool next);

/// The stop that a control belongs to: for an option button the one of its group, else itself; none: nullptr.
control* stop_of(const std::vector<control*>& stops, const control* c);

} // namespace desk::qt
