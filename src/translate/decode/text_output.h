#pragma once

#include "runtime/text.h"
#include "runtime/windows_1252.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// Appends pieces of text.
template <class... Pieces>
void print(std::string& text, const Pieces&... pieces) {
    ((text += pieces), ...);
}

/// Appends pieces of text and a line end.
template <class... Pieces>
void print_line(std::string& text, const Pieces&... pieces) {
    (text += ... += pieces) += line_end;
}

/// Appends `count` line ends.
inline void print_line_ends(std::string& text, int count) {
    for (int i = 0; i < count; ++i)
        text += line_end;
}

/// The text for a one-bit flag.
constexpr std::string_view supported(bool flag) { return flag ? "Supported" : "Not Supported"; }

/// Whether bit `number`, 0 to 7, of a byte is set.
constexpr bool bit(std::uint8_t byte, int number) { return (byte >> number & 1) != 0; }

/// Appends the character with a code: up to 255 in the desk's character set, above in Unicode.
inline void print_character(std::string& text, std::uint32_t code) {
    append_utf8(text, code < 256 ? character_of(static_cast<std::uint8_t>(code)) : static_cast<char32_t>(code));
}

/// Appends the character with the code value + 48: a digit for 0 to 9.
/// Intended: above 9 it is whatever character has that code.
inline void print_digit(std::string& text, std::uint32_t value) { print_character(text, value + '0'); }

} // namespace desk
