#pragma once

#include <cstdint>
#include <string_view>

namespace desk {

/// What the scanner finds in a window's text, in the text's order.
class text_findings {
public:
    virtual ~text_findings() = default;
    /// The two digits of a byte; one character or whatever stands there in a text that is not canonical.
    virtual void pair(std::string_view digits) = 0;
    /// A slash.
    virtual void comment_begins() {}
    /// A character of a comment, from the third behind its first slash on.
    virtual void comment_character(char /*c*/) {}
    /// The CR that ends a comment.
    virtual void comment_ends() {}
    /// A CR outside any comment.
    virtual void empty_line() {}
};

/// Reads a window's text by position: it trusts that a byte takes three characters and that an LF stands behind each
/// CR. One slash is enough for a comment.
void scan_window_text(std::string_view text, text_findings& found);

/// The value of a pair: its longest hexadecimal start; 0 where there is none.
std::uint8_t value_of_pair(std::string_view digits);

} // namespace desk
