#pragma once

#include <functional>
#include <string>
#include <vector>

namespace desk::test {

/// What holds of a desk on which nothing goes on, whatever has gone on before: no button is left at work, and what is
/// on show agrees with what the desk believes. Each rule that is broken is one line; `ask` says a line to the robot.
std::vector<std::string> broken_rules(const std::function<std::string(const std::string&)>& ask);

} // namespace desk::test
