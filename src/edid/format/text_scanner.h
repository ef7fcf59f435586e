#pragma once

#include <cstdint>
#include <string_view>

namespace desk {

/// Receives what the scanner finds in a window's text, in order.
class text_findings {
public:
    virtual ~text_findings() = default;
    /// The two digits of a byte; in a text that is not canonical, any one or two characters.
    virtual void pair(std::string_view digits) = 0;
    /// The slash that begins a comment.
    virtual void comment_begins() {}
    /// A character of a comment, except for its first slash and the character after it.
    virtual void comment_character(char /*c*/) {}
    /// The CR that ends a comment.
    virtual void comment_ends() {}
    /// A CR outside any comment.
    virtual void empty_line() {}
};

/// Reads a window's text by position: assumes that a byte takes three characters and that an LF follows each CR. One
/// slash begins a comment.
void scan_window_text(std::string_view text, text_findings& found);

/// The value of the hexadecimal digits at the start of a pair; 0 if there are none.
std::uint8_t value_of_pair(std::string_view digits);

} // namespace desk
