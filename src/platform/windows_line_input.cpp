#include "platform/end_request.h"
#include "platform/line_input.h"

#include <iostream>

namespace desk {

std::optional<std::string> line_input::next() {
    // Ctrl+C ends the wait of a console; a pipe is read to its end
    std::string line;
    if (request_.received() || !std::getline(std::cin, line) || request_.received()) return std::nullopt;
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

} // namespace desk
