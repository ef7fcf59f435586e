#pragma once

#include "controls/control.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace desk {

/// What a frame is on the plan, for the face that draws it.
enum class frame_kind {
    group,   ///< a group of controls
    view,    ///< the whole of a view
    overlay, ///< lies over a view for a while
    page,    ///< covers the frame that it lies in
};

class frame : public control {
public:
    frame() : control(control_kind::frame) {}
    property<std::string> caption{*this, ""};
    frame_kind role = frame_kind::group;
};

class button : public control {
public:
    button() : control(control_kind::button) {}
    property<std::string> caption{*this, ""};
    char mnemonic = 0;      ///< the letter of the caption that presses it from the keyboard; 0: none
    bool in_column = false; ///< one of a column of buttons that choose what is on show
    event on_click;
};

class label : public control {
public:
    label() : control(control_kind::label) {}
    property<std::string> caption{*this, ""};
    text_font font = text_font::sans;
    int line_pitch = 0;     ///< twips from line to line; 0: as the font has it
    bool in_middle = false; ///< its text is centred in its height, beside a box or a button of that height
    event on_click;
    event on_mouse_move;
};

class text_box : public control {
public:
    text_box() : control(control_kind::text_box) { back_color = color_white; }
    property<std::string> text{*this, ""};
    property<bool> locked{*this, false}; ///< the operator can't type into it
    bool multi_line = false;
    bool on_grid = false;    ///< its lines stand 16 pixels apart: other controls lie at fixed places over them
    bool any_length = false; ///< a locked one of many lines in fixed pitch, that shows a long text at once
    int max_length = 0;      ///< characters it holds; 0: no limit
    text_font font = text_font::sans;
    std::function<void(int)> on_key_press; ///< with the character's code

    int sel_start() const { return sel_start_; }   ///< in characters
    int sel_length() const { return sel_length_; } ///< in characters
    void select(int start, int length);
    /// Selection start 0, length the text's length.
    void select_all();
    /// Counts the selections made, since one that is made anew looks like the one before.
    int selections() const { return selections_; }

private:
    int sel_start_ = 0;
    int sel_length_ = 0;
    int selections_ = 0;
};

class combo_box : public control {
public:
    combo_box() : control(control_kind::combo_box) { back_color = color_white; }

    /// Adds an item at a list index from 0 to the count. Throws failure::invalid_procedure_call.
    void add_item(std::string item, int at);
    int list_count() const { return static_cast<int>(items_.size()); }
    /// Throws failure::invalid_property_value where there is no such item.
    const std::string& item(int list_index) const;
    const std::vector<std::string>& items() const { return items_; }

    /// The chosen item; -1: none.
    int list_index() const { return list_index_; }
    /// Chooses an item; raises Click where the index is not -1. Throws failure::invalid_property_value.
    void set_list_index(int list_index);
    /// The chosen item's text; empty where none is chosen.
    std::string text() const { return list_index_ < 0 ? "" : item(list_index_); }

    event on_click;

private:
    std::vector<std::string> items_;
    int list_index_ = -1;
};

class check_box : public control {
public:
    check_box() : control(control_kind::check_box) {}
    property<std::string> caption{*this, ""};
    property<int> value{*this, 0}; ///< 0 or 1
    /// Sets its value from a number that may be none. Throws failure::invalid_property_value.
    void set_value(int value);
    event on_click;
};

class option_button : public control {
public:
    option_button() : control(control_kind::option_button) {}
    property<std::string> caption{*this, ""};
    property<bool> value{*this, false};
    event on_click;

    /// Selects it and takes the selection from the others in its frame. Raises no Click.
    void choose();
};

class slider : public control {
public:
    slider() : control(control_kind::slider) {}
    int minimum = 0;
    int maximum = 255;
    int large_step = 20;
    int value() const { return value_; }
    /// Moves it; raises Change where it moves. Throws failure::invalid_property_value outside its range.
    void set_value(int value);
    /// Moves it and raises nothing. Throws failure::invalid_property_value outside its range.
    void place(int value);

    event on_change;
    event on_scroll;

private:
    int value_ = 0;
};

class picture : public control {
public:
    picture() : control(control_kind::picture) {}
    std::string file; ///< which picture: its file name in the assets, without the extension
};

/// A straight line from the left top to the right bottom of its place.
class line : public control {
public:
    line() : control(control_kind::line) {}
};

class timer : public control {
public:
    timer() : control(control_kind::timer) {
        visible = false;
        enabled = false;
    }
    int interval = 0; ///< milliseconds
    event on_timer;
};

} // namespace desk
