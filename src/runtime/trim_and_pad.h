#pragma once

#include <string>
#include <string_view>

namespace desk {

/// The value's decimal text, zero-padded to three characters. Throws failure::invalid_procedure_call for a value of
/// more than three characters.
std::string zero_pad3(int value);

/// Trims `text` in place, then pads it on the left to `width` with the first character of `pad`, or keeps its
/// rightmost `width` characters. Also leaves the result in `text`. Throws failure::invalid_procedure_call for an empty
/// `pad` or a negative `width`.
std::string pad_left(std::string& text, std::string_view pad, int width);

/// Removes spaces and tabs from both ends of `text` and returns it.
std::string trim_tabs(std::string& text);

} // namespace desk
