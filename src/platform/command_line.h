#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The arguments after the program's name, in UTF-8.
std::vector<std::string> program_arguments(int argument_count, char** arguments);

/// Turns off all translation of standard input and output, and keeps the number of a closed standard stream from files
/// and devices: what is written to the stream must not get there. For the rest of the run.
void prepare_standard_streams();

/// Writes bytes to standard output: unchanged to a file or pipe, as `terminal_text` to a terminal. Returns false on a
/// write error.
bool write_to_standard_output(std::string_view bytes);

/// Writes UTF-8 text to standard error, in the same way.
void write_to_standard_error(std::string_view text);

/// Overwrites the current line of the terminal on standard error.
void overwrite_terminal_line(std::string_view text);

/// Whether standard error is a terminal.
bool standard_error_is_a_terminal();

} // namespace desk
