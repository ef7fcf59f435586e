#pragma once

#include "runtime/text.h"
#include "runtime/windows_1252.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// Appends pieces of text one behind the other.
template <class... Pieces>
void print(std::string& text, const Pieces&... pieces) {
    ((text += pieces), ...);
}

/// The same, and a line end behind them.
template <class... Pieces>
void print_line(std::string& text, const Pieces&... pieces) {
    (text += ... += pieces) += line_end;
}

/// Appends so many line ends.
inline void print_line_ends(std::string& text, int count) {
    for (int i = 0; i < count; ++i)
        text += line_end;
}

/// The words of a flag of one bit.
constexpr std::string_view supported(bool flag) { return flag ? "Supported" : "Not Supported"; }

/// Whether bit 0 to 7 of a byte is set.
constexpr bool bit(std::uint8_t byte, int number) { return (byte >> number & 1) != 0; }

/// Appends the character of a code: up to 255 by the desk's character set, above as Unicode has it.
inline void print_character(std::string& text, std::uint32_t code) {
    append_utf8(text, code < 256 ? character_of(static_cast<std::uint8_t>(code)) : static_cast<char32_t>(code));
}

/// Appends the character of code value + 48: a digit for 0 to 9.
/// The desk behaves so: above 9 it is whatever character has that code.
inline void print_digit(std::string& text, std::uint32_t value) { print_character(text, value + '0'); }

} // namespace desk
