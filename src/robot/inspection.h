#pragma once

#include "controls/control.h"
#include "controls/window.h"
#include "robot/answers.h"
#include "shell/frm_main.h"

#include <optional>
#include <string>

namespace desk::robot {

/// A property of a control by name; none if controls of this kind do not have it.
std::optional<json> property_of(control& c, const std::string& name);

/// A row of a list view as {"text", "sub", "checked"}.
json row_of(const list_row& row);

/// The nodes of a tree view in the order in which they were added.
json nodes_of(const tree_view& tree);

/// All controls of a window as {"name", "kind", "parent"}.
json controls_of(const window& w);

/// A field of the desk by its name in the code; none if there is no such field.
std::optional<json> field_of(const frm_main& desk, const std::string& name);

} // namespace desk::robot
