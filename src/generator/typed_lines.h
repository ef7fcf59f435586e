#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// Cuts what is typed into lines, in bounded memory.
class typed_lines {
public:
    static constexpr std::size_t longest = 4096;

    void add(std::string_view typed);

    /// The typing is over: the last line needs no line end.
    void end();

    /// The next whole line without its line end. Of a line that is too long the first `longest` + 1 bytes.
    std::optional<std::string> next();

    bool has_line() const { return text_.find('\n') != std::string::npos; }

private:
    std::string text_;
    std::size_t last_line_ = 0; // the length of the line that is not whole yet
};

} // namespace desk
