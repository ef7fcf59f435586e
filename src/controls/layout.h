#pragma once

#include "controls/controls.h"
#include "controls/window.h"

#include <string>
#include <vector>

namespace desk {

/// How a control starts, where it differs from the default of its kind.
enum placement_flag : unsigned {
    as_usual = 0,
    hidden = 1U << 0U,
    disabled = 1U << 1U,
    locked = 1U << 2U,
    multi_line = 1U << 3U,
    fixed_pitch = 1U << 4U,
    large_bold = 1U << 5U,
    on_grid = 1U << 6U,    ///< a text box of cells, with controls over it
    any_length = 1U << 7U, ///< a text box that shows a long text at once
    small_print = 1U << 8U,
    in_middle = 1U << 9U,  ///< a label with vertically centred text
    in_column = 1U << 10U, ///< a button of a column that chooses what is shown
    view_frame = 1U << 11U,
    overlay_frame = 1U << 12U,
    page_frame = 1U << 13U,
};

/// One row of a layout table: the model, its name ("cmd_out(2)" in a control array), its frame (none: the window),
/// left, top, width and height in twips, and the caption. "&" precedes the mnemonic letter of the caption.
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

/// Puts the controls of a table into a window, in order.
void lay_out(window& w, const std::vector<placement>& table);

} // namespace desk
