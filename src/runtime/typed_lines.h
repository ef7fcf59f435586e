#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// Splits typed input into lines. A line that is too long takes bounded memory.
class typed_lines {
public:
    static constexpr std::size_t longest = 4096;

    void add(std::string_view typed);

    /// Ends the input: the last line needs no line end.
    void end();

    /// The next whole line without its line end; of a line that is too long, the first `longest` + 1 bytes.
    std::optional<std::string> next();

    bool has_line() const { return text_.find('\n') != std::string::npos; }

private:
    std::string text_;
    std::size_t last_line_ = 0; // the length of the incomplete line
};

} // namespace desk
