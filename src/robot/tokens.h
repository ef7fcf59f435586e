#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace desk::robot {

/// A token of a command line: a plain word, or a JSON string in double quotes.
struct token {
    std::string text;
    bool quoted = false;
    std::size_t at = 0; ///< its position in the line
};

/// The tokens of a line, separated by white space; none if a quoted token is not a JSON string.
std::optional<std::vector<token>> tokens_of(std::string_view line);

/// The whole number that a token is; none for any other token.
std::optional<int> number_of(const token& w);

/// The bytes that pairs of hexadecimal digits encode; none for any other text.
std::optional<std::string> bytes_of_hex(std::string_view digits);
std::string hex_of_bytes(std::string_view bytes);

} // namespace desk::robot
