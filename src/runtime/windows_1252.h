#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The single-byte character set of the desk: Windows code page 1252 (the Unicode consortium's CP1252 table).
/// The five codes that it leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to themselves.

/// The Unicode character of a byte.
char32_t character_of(std::uint8_t byte);

/// Appends a Unicode character in UTF-8. What is no character becomes U+FFFD.
void append_utf8(std::string& text, char32_t character);

/// The bytes as UTF-8 text, one character each.
std::string text_from_bytes(std::string_view bytes);

/// UTF-8 text as bytes, one for each character; a character without a byte becomes "?".
std::string bytes_from_text(std::string_view text);

/// The characters of UTF-8 text; text that is no UTF-8 counts as bytes of the character set.
std::vector<char32_t> characters_of(std::string_view text);

/// The number of characters of UTF-8 text.
std::size_t character_count(std::string_view text);

/// The first `count` characters of UTF-8 text, or all of it where it is shorter.
std::string_view first_characters(std::string_view text, std::size_t count);

/// The last `count` characters of UTF-8 text, or all of it where it is shorter.
std::string_view last_characters(std::string_view text, std::size_t count);

/// UTF-8 text without its last `count` characters. Throws failure::invalid_procedure_call where it is shorter.
std::string without_last_characters(std::string_view text, std::size_t count);

/// UTF-8 stays as it is; text that is no UTF-8 is read as bytes of the character set.
std::string as_utf8(std::string_view text);

} // namespace desk
