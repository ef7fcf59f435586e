#pragma once

#include <string>
#include <string_view>

namespace desk {

/// UTF-8 text made safe for a terminal: each control character becomes "?", since a terminal would obey it. Line ends
/// (LF, CR LF) and tabs stay. Text that is not UTF-8 is read as bytes of the character set.
std::string terminal_text(std::string_view text);

} // namespace desk
