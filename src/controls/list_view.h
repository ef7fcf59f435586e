#pragma once

#include "controls/control.h"

#include <string>
#include <vector>

namespace desk {

/// A row of a list view.
struct list_row {
    std::string text;
    std::vector<std::string> sub; ///< sub-items 1, 2, ... at 0, 1, ...
    bool checked = false;
};

struct list_column {
    std::string title;
    int width = 0; ///< twips
};

/// A list view in report form. Rows count from 1; a row number out of range throws failure::index_out_of_bounds. The
/// first row added is selected, as in all list views of this kind.
class list_view : public control {
public:
    list_view() : control(this) { back_color = color_white; }

    std::vector<list_column> columns;
    property<bool> check_boxes{*this, false}; ///< shown; while they are hidden, rows keep their checks

    void add_row(std::string text);
    void clear();
    int row_count() const { return static_cast<int>(rows_.size()); }
    const list_row& row(int number) const;
    const std::string& text(int number) const { return row(number).text; }
    /// Sub-item `sub` of a row; empty if never set. Throws failure::invalid_property_value if `sub` is less than 1.
    std::string sub_item(int number, int sub) const;
    void set_sub_item(int number, int sub, std::string text);
    void set_checked(int number, bool checked);

    /// The selected row; 0: none, only in an empty list.
    int selected() const { return selected_; }
    void select(int number);
    /// How often a row was selected: a repeated selection looks the same.
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
