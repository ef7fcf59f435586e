#include "generator/command_stream.h"

#include <algorithm>

namespace desk {

void command_stream::receive(std::string_view bytes, double now_ms) {
    pending_ += bytes;
    arrived_ms_.insert(arrived_ms_.end(), bytes.size(), now_ms);
}

std::optional<stream_item> command_stream::next() {
    drop_what_was_left_behind();
    const std::size_t size = item_size();
    if (pending_.size() < size) return std::nullopt;
    stream_item item{raw_expected(), pending_.substr(0, size), arrived_ms_.at(size - 1)};
    drop(size);
    raw_count_ = 0;
    return item;
}

void command_stream::expect_raw(std::size_t count, double since_ms) {
    raw_count_ = count;
    raw_since_ms_ = since_ms;
}

void command_stream::forget() {
    drop(pending_.size());
    raw_count_ = 0;
}

void command_stream::drop(std::size_t count) {
    pending_.erase(0, count);
    arrived_ms_.erase(arrived_ms_.begin(), arrived_ms_.begin() + static_cast<std::ptrdiff_t>(count));
}

void command_stream::drop_what_was_left_behind() {
    if (raw_expected() && !pending_.empty() && arrived_ms_.front() - raw_since_ms_ > silence_ms) raw_count_ = 0;
    const auto silent = [](double before_ms, double after_ms) { return after_ms - before_ms > silence_ms; };
    while (true) {
        const auto begin = arrived_ms_.begin();
        const auto end = begin + static_cast<std::ptrdiff_t>(std::min(item_size(), pending_.size()));
        const auto last_before = std::adjacent_find(begin, end, silent);
        if (last_before == end) return;
        drop(static_cast<std::size_t>(last_before - begin) + 1);
        // what begins behind a silence is a command
        raw_count_ = 0;
    }
}

} // namespace desk
