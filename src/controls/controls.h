#pragma once

#include "controls/control.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace desk {

/// The role of a frame on the plan, for the adapter that draws it.
enum class frame_kind {
    group,   ///< a group of controls
    view,    ///< the whole of a view
    overlay, ///< temporarily covers part of a view
    page,    ///< covers the frame that contains it
};

class frame : public control {
public:
    frame() : control(this) {}
    property<std::string> caption{*this, ""};
    frame_kind role = frame_kind::group;
};

class button : public control {
public:
    button() : control(this) {}
    property<std::string> caption{*this, ""};
    char mnemonic = 0;      ///< the letter of the caption that presses it with Alt; 0: none
    bool in_column = false; ///< one of a column of buttons that choose what is shown
    event on_click;
};

class label : public control {
public:
    label() : control(this) {}
    property<std::string> caption{*this, ""};
    text_font font = text_font::sans;
    int line_pitch = 0;     ///< twips from line to line; 0: that of the font
    bool in_middle = false; ///< text centred vertically, beside a box or a button of that height
    event on_click;
    event on_mouse_move;
};

class text_box : public control {
public:
    text_box() : control(this) { back_color = color_white; }
    property<std::string> text{*this, ""};
    property<bool> locked{*this, false}; ///< read-only for the operator
    bool multi_line = false;
    bool on_grid = false;    ///< 16 pixels per line: other controls cover fixed places of the text
    bool any_length = false; ///< locked, of many lines in fixed pitch: shows a long text at once
    int max_length = 0;      ///< in characters; 0: no limit
    text_font font = text_font::sans;
    std::function<void(int)> on_key_press; ///< with the character code

    int sel_start() const { return sel_start_; }   ///< in characters
    int sel_length() const { return sel_length_; } ///< in characters
    void select(int start, int length);
    /// Selects the whole text.
    void select_all();
    /// How often text was selected: a repeated selection looks the same.
    int selections() const { return selections_; }

private:
    int sel_start_ = 0;
    int sel_length_ = 0;
    int selections_ = 0;
};

class combo_box : public control {
public:
    combo_box() : control(this) { back_color = color_white; }

    /// Inserts an item at a list index from 0 to the count. Throws failure::invalid_procedure_call for any other.
    void add_item(std::string item, int at);
    int list_count() const { return static_cast<int>(items_.size()); }
    /// Throws failure::invalid_property_value if there is no such item.
    const std::string& item(int list_index) const;
    const std::vector<std::string>& items() const { return items_; }

    /// The chosen item; -1: none.
    int list_index() const { return list_index_; }
    /// Chooses an item; raises Click unless the index is -1. Throws failure::invalid_property_value if there is no such
    /// item.
    void set_list_index(int list_index);
    /// The text of the chosen item; empty if none is chosen.
    std::string text() const { return list_index_ < 0 ? "" : item(list_index_); }

    event on_click;

private:
    std::vector<std::string> items_;
    int list_index_ = -1;
};

class check_box : public control {
public:
    check_box() : control(this) {}
    property<std::string> caption{*this, ""};
    property<int> value{*this, 0}; ///< 0 or 1
    /// Sets the value. Throws failure::invalid_property_value unless it is 0 or 1.
    void set_value(int value);
    event on_click;
};

class option_button : public control {
public:
    option_button() : control(this) {}
    property<std::string> caption{*this, ""};
    property<bool> value{*this, false};
    event on_click;

    /// Selects it and deselects the others in its frame. Raises no Click.
    void choose();
};

class slider : public control {
public:
    slider() : control(this) {}
    int minimum = 0;
    int maximum = 255;
    int large_step = 20;
    int value() const { return value_; }
    /// Moves it; raises Change if the value changes. Throws failure::invalid_property_value outside its range.
    void set_value(int value);
    /// Moves it and raises no event. Throws failure::invalid_property_value outside its range.
    void place(int value);

    event on_change;
    event on_scroll;

private:
    int value_ = 0;
};

class picture : public control {
public:
    picture() : control(this) {}
    std::string file; ///< its file name in the assets, without the extension
};

/// A straight line from its top left to its bottom right corner.
class line : public control {
public:
    line() : control(this) {}
};

class timer : public control {
public:
    timer() : control(this) {
        visible = false;
        enabled = false;
    }
    int interval = 0; ///< milliseconds
    event on_timer;
};

} // namespace desk
