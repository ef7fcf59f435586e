#pragma once

#include <string>
#include <string_view>

namespace desk {

/// Text as a terminal can be given it, in UTF-8: each control character is shown as "?" and not sent, for a terminal
/// would obey it. Line ends (LF, CR LF) and tabs pass. Text that is not UTF-8 is read as bytes of the character set.
std::string terminal_text(std::string_view text);

} // namespace desk
