#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The words behind the program's name, in UTF-8.
std::vector<std::string> program_arguments(int argument_count, char** arguments);

/// From now on standard input and standard output pass every byte as it is.
void pass_standard_streams_as_bytes();

/// Bytes to standard output as they are. False: it takes no more.
bool write_to_standard_output(std::string_view bytes);

/// Text in UTF-8 to standard error.
void write_to_standard_error(std::string_view text);

/// Whether somebody reads standard error on a terminal.
bool standard_error_is_a_terminal();

} // namespace desk
