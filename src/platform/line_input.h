#pragma once

#include <optional>
#include <string>

namespace desk {

class end_request;

/// The lines of standard input, in UTF-8.
class line_input {
public:
    explicit line_input(const end_request& request) : request_(request) {}

    /// Waits for the next line and returns it without its line end. Nothing at the end of the input, or when the end
    /// of the program is requested.
    std::optional<std::string> next();

private:
    const end_request& request_;
    std::string waiting_; // read, but not yet returned
    bool ended_ = false;
};

} // namespace desk
