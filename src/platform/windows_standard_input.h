#pragma once

#include <string>

namespace desk {

/// Waits for standard input and puts what has arrived into `text`, in UTF-8. Returns false at the end of the input.
/// Ctrl+C ends the wait of a console with an empty text.
bool read_standard_input(std::string& text);

} // namespace desk
