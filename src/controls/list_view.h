#pragma once

#include "controls/control.h"

#include <string>
#include <vector>

namespace desk {

struct list_row {
    std::string text;
    std::vector<std::string> sub; ///< sub-items 1, 2, ... stand at 0, 1, ...
    bool checked = false;
};

struct list_column {
    std::string title;
    int width = 0; ///< twips
};

/// A list view in report form. Rows count from 1. A row number that is not there throws
/// failure::index_out_of_bounds. The first row added is the selected one, as list views of this kind do.
class list_view : public control {
public:
    list_view() : control(control_kind::list_view) { back_color = color_white; }

    std::vector<list_column> columns;
    property<bool> check_boxes{*this, false}; ///< shown; a row's check keeps its state while they are not

    void add_row(std::string text);
    void clear();
    int row_count() const { return static_cast<int>(rows_.size()); }
    const list_row& row(int number) const;
    const std::string& text(int number) const { return row(number).text; }
    /// Sub-item `sub` of a row, from 1; empty where it was never set. Throws failure::invalid_property_value for less.
    std::string sub_item(int number, int sub) const;
    void set_sub_item(int number, int sub, std::string text);
    void set_checked(int number, bool checked);

    /// The selected row; 0: none, which is so in an empty list alone.
    int selected() const { return selected_; }
    void select(int number);
    /// Counts the selections made: one that is made anew is to be seen as the first was.
    int selections() const { return selections_; }

    event on_click;
    event on_double_click;
    event on_key_up;

private:
    list_row& row_at(int number);
    std::vector<list_row> rows_;
    int selected_ = 0;
    int selections_ = 0;
};

} // namespace desk
