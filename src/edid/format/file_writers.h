#pragma once

#include <string>
#include <string_view>

namespace desk {

/// The raw bytes of a window's text, one for each pair of digits.
std::string bin_of(std::string_view window_text);

/// A window's text as a simple HEX file: unchanged, with a final line end.
std::string simple_hex_of(std::string_view window_text);

/// A window's text as the lines of an initialiser in the C language: "0x00,0xFF, //7".
/// Intended: only the end of a comment writes a line, so the bytes after the last comment are lost.
std::string c_language_hex_of(std::string_view window_text);

} // namespace desk
