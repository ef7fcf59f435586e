#pragma once

#include <string>
#include <string_view>

namespace desk {

/// A window's text as raw bytes, one for each pair.
std::string bin_of(std::string_view window_text);

/// A window's text as a simple-type HEX file: as it stands, and a line end.
std::string simple_hex_of(std::string_view window_text);

/// A window's text as the lines of an initialiser in the C language: "0x00,0xFF, //7".
/// The desk behaves so: only a comment's end prints a line, so the bytes behind the last comment are lost.
std::string c_language_hex_of(std::string_view window_text);

} // namespace desk
