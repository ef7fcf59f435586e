#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace desk::robot {

/// A word of a command line: plain, or a JSON string in double quotes.
struct token {
    std::string text;
    bool quoted = false;
    std::size_t at = 0; ///< where it begins in the line
};

/// The words of a line, parted by blanks; nothing where a quoted word is no JSON string.
std::optional<std::vector<token>> tokens_of(std::string_view line);

/// A whole number; nothing for any other word.
std::optional<int> number_of(const token& w);

/// The bytes that pairs of hexadecimal digits name; nothing for any other text.
std::optional<std::string> bytes_of_hex(std::string_view digits);
std::string hex_of_bytes(std::string_view bytes);

} // namespace desk::robot
