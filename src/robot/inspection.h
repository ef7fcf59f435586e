#pragma once

#include "controls/control.h"
#include "controls/window.h"
#include "robot/answers.h"
#include "shell/frm_main.h"

#include <optional>
#include <string>

namespace desk::robot {

/// A property of a control by its name; nothing where the kind has no such property.
std::optional<json> property_of(control& c, const std::string& name);

/// A row of a list view as {"text", "sub", "checked"}.
json row_of(const list_row& row);

/// The nodes of a tree view in order of adding.
json nodes_of(const tree_view& tree);

/// All controls of a window as {"name", "kind", "parent"}.
json controls_of(const window& w);

/// A field of the desk by its name in the code; nothing where there is no such field.
std::optional<json> field_of(const frm_main& desk, const std::string& name);

} // namespace desk::robot
