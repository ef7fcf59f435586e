#pragma once

#include <functional>
#include <string>
#include <vector>

namespace desk::test {

/// Invariants of an idle desk, whatever happened before: no button is left busy, and the display matches the desk's
/// state. Returns one line for each broken rule; `ask` sends a line to the robot.
std::vector<std::string> broken_rules(const std::function<std::string(const std::string&)>& ask);

} // namespace desk::test
