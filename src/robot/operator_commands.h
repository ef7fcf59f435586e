#pragma once

#include "controls/control.h"
#include "robot/tokens.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace desk::robot {

/// What one operator's command does to a control that can be used now: `tokens[1]` names the control, more tokens may
/// follow. Gives the answer: ok, or why an operator could not do that.
using operator_command = std::function<std::string(control&, const std::vector<token>&)>;

/// The commands on controls by name: click, doubleclick, select, check, type, focus, key, keyup, slide, drag, hover.
const std::map<std::string, operator_command>& operator_commands();

} // namespace desk::robot
