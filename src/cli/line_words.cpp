#include "cli/line_words.h"

#include <optional>

namespace desk::cli {

namespace {

/// The characters that a backslash keeps; before any other it is one itself, as in a path of Windows.
constexpr std::string_view kept = " \t\"'\\#";

} // namespace

std::vector<std::string> words_of_line(std::string_view line) {
    std::vector<std::string> words;
    std::optional<std::string> word;
    const auto extend = [&word](char c) {
        if (!word) word.emplace();
        *word += c;
    };
    char quote = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quote != 0 && c == quote) {
            quote = 0;
        } else if (c == '\\' && quote != '\'' && i + 1 < line.size() && kept.find(line[i + 1]) != kept.npos) {
            extend(line[++i]);
        } else if (quote != 0) {
            *word += c;
        } else if (c == '\'' || c == '"') {
            quote = c;
            if (!word) word.emplace();
        } else if (c == ' ' || c == '\t') {
            if (word) words.push_back(*word);
            word.reset();
        } else if (c == '#' && !word) {
            break;
        } else {
            extend(c);
        }
    }
    if (quote != 0) throw unclosed_quote();
    if (word) words.push_back(*word);
    return words;
}

} // namespace desk::cli
