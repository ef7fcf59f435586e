#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace desk::cli {

/// A line with a quotation mark that nothing closes.
class unclosed_quote : public std::runtime_error {
public:
    unclosed_quote() : std::runtime_error("a quotation mark is not closed") {}
};

/// Splits a line of commands into words, as a shell does: separated by spaces; 'a b' and "a b" are one word; outside
/// '...' a backslash keeps a space, a quotation mark, a backslash or "#" that follows it; "#" at the start of a word
/// begins a comment. Throws unclosed_quote.
std::vector<std::string> words_of_line(std::string_view line);

} // namespace desk::cli
