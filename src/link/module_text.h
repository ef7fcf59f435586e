#pragma once

#include <string>
#include <string_view>

namespace desk {

/// The value's decimal text with "0" put in front up to three characters. Throws
/// failure::invalid_procedure_call for a value of more than three characters.
std::string zero_pad3(int value);

/// Trims `text` in place; puts the first character of `pad` in front up to `width`, or keeps the rightmost `width`
/// characters where it is longer. The result is also left in `text`. Throws failure::invalid_procedure_call for an
/// empty `pad` or a negative `width`.
std::string pad_left(std::string& text, std::string_view pad, int width);

/// What stands around the last backslash or slash of a path. Part 0: all before it. Part 1: a short form for display,
/// the first three characters, "...", and the rest from there on; the path unchanged where it is the third character.
/// Part 2: all behind it. Without any, part 0 is empty and parts 1 and 2 are the whole path.
std::string path_part(const std::string& path, int part);

/// Removes spaces and tabs from both ends of `text` and returns it.
std::string trim_tabs(std::string& text);

} // namespace desk
