#pragma once

#include "controls/kinds.h"

#include <string>

namespace desk::cli {

// What the operator does with the desk's controls. All of it throws command_failure for a control that the desk does
// not let the operator use now.

void press(button& b);
void select(list_view& l, int row);
void select(combo_box& c, int list_index);
void select(option_button& o);
void check(list_view& l, int row, bool checked);
void check(check_box& c, bool checked);
void type(text_box& t, const std::string& text);
void drag(slider& s, int value);

/// A control of a window by its full name. The name is one of the desk's own.
template <class Control>
Control& control_in(const window& w, const std::string& name) {
    return *as<Control>(w.find(name));
}

} // namespace desk::cli
