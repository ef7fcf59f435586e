#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The words behind the program's name, in UTF-8.
std::vector<std::string> program_arguments(int argument_count, char** arguments);

/// From now on standard input and standard output pass every byte as it is.
void pass_standard_streams_as_bytes();

/// Writes bytes to standard output: as they are into a file or a pipe, as `terminal_text` to a terminal. False: it
/// takes no more.
bool write_to_standard_output(std::string_view bytes);

/// Writes text in UTF-8 to standard error, in the same way.
void write_to_standard_error(std::string_view text);

/// Writes text over the current line of the terminal that standard error is.
void write_over_terminal_line(std::string_view text);

/// Whether somebody reads standard error on a terminal.
bool standard_error_is_a_terminal();

} // namespace desk
