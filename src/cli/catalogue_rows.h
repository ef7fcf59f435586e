#pragma once

#include "cli/answer.h"
#include "controls/list_view.h"

#include <string>

namespace desk::cli {

/// The row that a word of the command line means: a row's number, its whole name, its name without the number in
/// brackets, or a part of the name that only one row has; without regard to case. `kind` ("timing") is for the message.
/// Throws command_failure (misused) if there is none, or more than one.
int row_of(const list_view& rows, const std::string& word, const std::string& kind);

/// {"row":7,"name":"..."}
json row_object(const list_view& rows, int row);

/// A line "  7  name" for each of these rows.
std::string row_line(const list_view& rows, int row);

} // namespace desk::cli
