#pragma once

#include "runtime/typed_lines.h"

#include <cstddef>
#include <optional>
#include <string>

namespace desk {

class end_request;

/// The lines of standard input, in UTF-8.
class line_input {
public:
    static constexpr std::size_t longest = typed_lines::longest;

    explicit line_input(const end_request& request) : request_(request) {}

    /// Waits for the next line and returns it without its line end; of a line that is too long, the first
    /// `longest` + 1 bytes. Nothing at the end of the input, or when the end of the program is requested.
    std::optional<std::string> next();

private:
    /// Waits for bytes. None at the end of the input, or when the end of the program is requested.
    std::string read_more() const;

    const end_request& request_;
    typed_lines lines_;
    bool ended_ = false;
};

} // namespace desk
