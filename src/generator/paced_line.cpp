#include "generator/paced_line.h"

#include <algorithm>
#include <utility>

namespace desk {

void paced_line::send(const answer& parts, time start) {
    waiting_answer waiting{start, {}, {}};
    time pause{0};
    for (const answer_part& part : parts) {
        pause += part.pause;
        if (part.data.empty()) continue;
        if (waiting.parts.empty())
            waiting.start += pause;
        else
            waiting.pauses.push_back(pause);
        waiting.parts.push_back(part.data);
        pause = time(0);
    }
    if (!waiting.parts.empty()) waiting_.push_back(std::move(waiting));
}

std::deque<paced_line::waiting_answer>::iterator paced_line::next_waiting() {
    return std::min_element(waiting_.begin(), waiting_.end(),
                            [](const auto& a, const auto& b) { return a.start < b.start; });
}

void paced_line::begin_parts(time now) {
    for (auto next = next_waiting(); next != waiting_.end(); next = next_waiting()) {
        time at = std::max(next->start, free_at_);
        if (at >= now) return;
        for (const std::uint8_t value : next->parts.front())
            bytes_.push_back({at += byte_time, value});
        parts_.push_back({at, std::move(next->parts.front())});
        free_at_ = at;
        next->parts.pop_front();
        if (next->parts.empty()) {
            waiting_.erase(next);
            continue;
        }
        next->start = at + next->pauses.front();
        next->pauses.pop_front();
    }
}

paced_line::time paced_line::free_at() const {
    paced_line line = *this;
    line.begin_parts(time::max());
    return line.free_at_;
}

bytes paced_line::take_until(time now) {
    begin_parts(now);
    bytes taken;
    for (; !bytes_.empty() && bytes_.front().at <= now; bytes_.pop_front())
        taken.push_back(bytes_.front().value);
    return taken;
}

std::vector<bytes> paced_line::take_finished_parts(time now) {
    begin_parts(now);
    std::vector<bytes> taken;
    for (; !parts_.empty() && parts_.front().end <= now; parts_.pop_front())
        taken.push_back(std::move(parts_.front().data));
    return taken;
}

std::optional<paced_line::time> paced_line::next_arrival() const {
    if (!bytes_.empty()) return bytes_.front().at;
    if (waiting_.empty()) return std::nullopt;
    time start = waiting_.front().start;
    for (const waiting_answer& w : waiting_)
        start = std::min(start, w.start);
    return std::max(start, free_at_) + byte_time;
}

void paced_line::clear() {
    waiting_.clear();
    bytes_.clear();
    parts_.clear();
    free_at_ = time(0);
}

} // namespace desk
