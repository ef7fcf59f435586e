#pragma once

#include "controls/controls.h"
#include "controls/window.h"

#include <string>
#include <vector>

namespace desk {

/// How a control starts, where it differs from its kind's usual start.
enum placement_flag : unsigned {
    as_usual = 0,
    hidden = 1U << 0U,
    disabled = 1U << 1U,
    locked = 1U << 2U,
    multi_line = 1U << 3U,
    fixed_pitch = 1U << 4U,
    large_bold = 1U << 5U,
    row_pitch = 1U << 6U,  ///< a label whose lines stand at the pitch of the rows beside it
    on_grid = 1U << 7U,    ///< a text box of cells, for controls that lie over it
    any_length = 1U << 8U, ///< a text box that shows a long text at once
};

/// The distance from line to line of the labels that title rows of boxes or buttons; the rows themselves stand two
/// lines apart. In twips.
inline constexpr int label_line_pitch = 225;

/// One line of a layout table: the model, its name ("cmd_out(2)" in a control array), the frame it lies in (none: the
/// window), left, top, width and height in twips, and the caption. "&" stands before the caption's mnemonic letter.
struct placement {
    control& model;
    const char* name;
    frame* parent;
    int left;
    int top;
    int width;
    int height;
    const char* caption = "";
    unsigned flags = as_usual;
};

/// Puts the controls of a table into a window, in the table's order.
void lay_out(window& w, const std::vector<placement>& table);

} // namespace desk
