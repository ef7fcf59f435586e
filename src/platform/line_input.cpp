#include "platform/line_input.h"

#include "platform/end_request.h"

namespace desk {

std::optional<std::string> line_input::next() {
    while (!request_.received()) {
        if (std::optional<std::string> line = lines_.next()) {
            if (line->ends_with('\r')) line->pop_back();
            return line;
        }
        if (ended_) break;
        const std::string more = read_more();
        lines_.add(more);
        if (!more.empty()) continue;
        ended_ = true;
        lines_.end();
    }
    return std::nullopt;
}

} // namespace desk
