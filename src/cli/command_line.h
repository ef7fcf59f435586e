#pragma once

#include "cli/commands.h"

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace desk::cli {

using command = std::function<void(desk_session& session, console& out)>;

/// Commands from standard input.
struct batch_of_commands {
    bool keep_going = false; ///< after a failure too
};

/// A text to show instead of doing anything.
struct shown_text {
    std::string text;
};

struct command_line {
    std::optional<std::string> port;
    answer_style style;
    std::variant<command, batch_of_commands, shown_text> task;
};

/// Parses the arguments of the program; `keys` is standard input. Throws command_failure (misused).
command_line parse_arguments(const std::vector<std::string>& words, line_input& keys);

/// Parses one line of a batch, which has no options of the program. Throws the same.
command parse_line(const std::vector<std::string>& words);

/// The answer style that the arguments ask for, even if they make no sense otherwise.
answer_style style_of(const std::vector<std::string>& words);

} // namespace desk::cli
