#include "generator/paced_line.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace desk {

void paced_line::send(const answer& parts, std::int64_t start_ns) {
    std::int64_t at_ns = std::max(start_ns, free_ns_);
    for (const answer_part& part : parts) {
        at_ns += std::max<std::int64_t>(0, std::llround(part.pause_ms * 1e6));
        if (part.data.empty()) continue;
        for (const std::uint8_t value : part.data)
            bytes_.push_back({at_ns += byte_ns, value});
        parts_.push_back({at_ns, part.data});
    }
    // silence leaves the line as it was
    if (!parts.empty()) free_ns_ = at_ns;
}

bytes paced_line::take_until(std::int64_t now_ns) {
    bytes taken;
    for (; !bytes_.empty() && bytes_.front().at_ns <= now_ns; bytes_.pop_front())
        taken.push_back(bytes_.front().value);
    return taken;
}

std::vector<bytes> paced_line::take_finished_parts(std::int64_t now_ns) {
    std::vector<bytes> taken;
    for (; !parts_.empty() && parts_.front().end_ns <= now_ns; parts_.pop_front())
        taken.push_back(std::move(parts_.front().data));
    return taken;
}

std::optional<std::int64_t> paced_line::next_arrival_ns() const {
    if (bytes_.empty()) return std::nullopt;
    return bytes_.front().at_ns;
}

void paced_line::clear() {
    bytes_.clear();
    parts_.clear();
    free_ns_ = 0;
}

} // namespace desk
