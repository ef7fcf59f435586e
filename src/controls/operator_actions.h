#pragma once

#include "controls/controls.h"
#include "controls/list_view.h"
#include "controls/tree_view.h"

#include <string>

namespace desk {

/// The actions of the operator, which every adapter passes to the model: first the control's own reaction, then its
/// event. None of them checks whether the control is usable.

void click(button& b);
void click(label& l);
void click(check_box& c);     ///< changes the value first
void click(option_button& o); ///< selects it first; raises Click even if it was selected
void choose_item(combo_box& c, int list_index);
void choose_row(list_view& l, int row);
void double_click(list_view& l);
void key_up(list_view& l);
void set_check(list_view& l, int row, bool checked);
void move_slider(slider& s, int value); ///< Change
void drag_slider(slider& s, int value); ///< Scroll
void type_text(text_box& t, std::string text);
void press_key(text_box& t, int code);
void click_node(tree_view& t, int node);
void hover(label& l);

} // namespace desk
