#include "generator/paced_line.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace desk {

void paced_line::send(const answer& parts, std::int64_t start_ns) {
    waiting_answer waiting{start_ns, {}, {}};
    std::int64_t pause_ns = 0;
    for (const answer_part& part : parts) {
        pause_ns += std::max<std::int64_t>(0, std::llround(part.pause_ms * 1e6));
        if (part.data.empty()) continue;
        if (waiting.parts.empty())
            waiting.start_ns += pause_ns;
        else
            waiting.pauses_ns.push_back(pause_ns);
        waiting.parts.push_back(part.data);
        pause_ns = 0;
    }
    if (!waiting.parts.empty()) waiting_.push_back(std::move(waiting));
}

std::deque<paced_line::waiting_answer>::iterator paced_line::next_waiting() {
    return std::min_element(waiting_.begin(), waiting_.end(),
                            [](const auto& a, const auto& b) { return a.start_ns < b.start_ns; });
}

void paced_line::begin_parts(std::int64_t now_ns) {
    for (auto next = next_waiting(); next != waiting_.end(); next = next_waiting()) {
        std::int64_t at_ns = std::max(next->start_ns, free_ns_);
        if (at_ns >= now_ns) return;
        for (const std::uint8_t value : next->parts.front())
            bytes_.push_back({at_ns += byte_ns, value});
        parts_.push_back({at_ns, std::move(next->parts.front())});
        free_ns_ = at_ns;
        next->parts.pop_front();
        if (next->parts.empty()) {
            waiting_.erase(next);
            continue;
        }
        next->start_ns = at_ns + next->pauses_ns.front();
        next->pauses_ns.pop_front();
    }
}

std::int64_t paced_line::free_ns() const {
    paced_line line = *this;
    line.begin_parts(std::numeric_limits<std::int64_t>::max());
    return line.free_ns_;
}

bytes paced_line::take_until(std::int64_t now_ns) {
    begin_parts(now_ns);
    bytes taken;
    for (; !bytes_.empty() && bytes_.front().at_ns <= now_ns; bytes_.pop_front())
        taken.push_back(bytes_.front().value);
    return taken;
}

std::vector<bytes> paced_line::take_finished_parts(std::int64_t now_ns) {
    begin_parts(now_ns);
    std::vector<bytes> taken;
    for (; !parts_.empty() && parts_.front().end_ns <= now_ns; parts_.pop_front())
        taken.push_back(std::move(parts_.front().data));
    return taken;
}

std::optional<std::int64_t> paced_line::next_arrival_ns() const {
    if (!bytes_.empty()) return bytes_.front().at_ns;
    if (waiting_.empty()) return std::nullopt;
    std::int64_t start_ns = waiting_.front().start_ns;
    for (const waiting_answer& w : waiting_)
        start_ns = std::min(start_ns, w.start_ns);
    return std::max(start_ns, free_ns_) + byte_ns;
}

void paced_line::clear() {
    waiting_.clear();
    bytes_.clear();
    parts_.clear();
    free_ns_ = 0;
}

} // namespace desk
