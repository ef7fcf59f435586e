#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The desk's single-byte character set: Windows code page 1252 (the Unicode consortium's CP1252 table). Its five
/// undefined codes (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to themselves.

/// The Unicode character of a byte.
char32_t character_of(std::uint8_t byte);

/// Appends a Unicode character in UTF-8. An invalid one becomes U+FFFD.
void append_utf8(std::string& text, char32_t character);

/// Converts bytes to UTF-8, one character each.
std::string text_from_bytes(std::string_view bytes);

/// Converts UTF-8 to bytes, one for each character; a character that has none becomes "?".
std::string bytes_from_text(std::string_view text);

/// The characters of UTF-8 text; invalid UTF-8 is read as bytes of the character set.
std::vector<char32_t> characters_of(std::string_view text);

/// Number of characters in UTF-8 text.
std::size_t character_count(std::string_view text);

/// The first `count` characters of UTF-8 text, or all of a shorter one.
std::string_view first_characters(std::string_view text, std::size_t count);

/// The last `count` characters of UTF-8 text, or all of a shorter one.
std::string_view last_characters(std::string_view text, std::size_t count);

/// UTF-8 text without its last `count` characters. Throws failure::invalid_procedure_call if it is shorter.
std::string without_last_characters(std::string_view text, std::size_t count);

/// Leaves UTF-8 unchanged; converts anything else from bytes of the character set.
std::string as_utf8(std::string_view text);

} // namespace desk
