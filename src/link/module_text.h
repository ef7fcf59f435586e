#pragma once

#include <string>
#include <string_view>

namespace desk {

/// The decimal value, padded with "0" to three characters. Throws failure::invalid_procedure_call for a value of more
/// than three characters.
std::string zero_pad3(int value);

/// Trims `text` in place; pads it on the left to `width` with the first character of `pad`, or keeps its last `width`
/// characters if it is longer. Throws failure::invalid_procedure_call for an empty `pad` or a negative `width`.
std::string pad_left(std::string& text, std::string_view pad, int width);

/// Splits a path at its last backslash or slash. Part 0: all before it. Part 1: a short form for display, the first
/// three characters, "...", and the rest from there on; the unchanged path if it is the third character. Part 2: all
/// after it. Without any, part 0 is empty and parts 1 and 2 are the whole path.
std::string path_part(const std::string& path, int part);

/// Removes spaces and tabs from both ends of `text` and returns it.
std::string trim_tabs(std::string& text);

} // namespace desk
