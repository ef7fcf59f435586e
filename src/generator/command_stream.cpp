#include "generator/command_stream.h"

#include <algorithm>

namespace desk {

void command_stream::receive(std::string_view bytes, time now) {
    pending_ += bytes;
    arrived_.insert(arrived_.end(), bytes.size(), now);
}

std::optional<stream_item> command_stream::next() {
    drop_abandoned();
    const std::size_t size = item_size();
    if (pending_.size() < size) return std::nullopt;
    stream_item item{raw_expected(), pending_.substr(0, size), arrived_.at(size - 1)};
    drop(size);
    raw_count_ = 0;
    return item;
}

void command_stream::expect_raw(std::size_t count, time answered_at) {
    raw_count_ = count;
    raw_since_ = answered_at;
}

void command_stream::forget() {
    drop(pending_.size());
    raw_count_ = 0;
}

void command_stream::drop(std::size_t count) {
    pending_.erase(0, count);
    arrived_.erase(arrived_.begin(), arrived_.begin() + static_cast<std::ptrdiff_t>(count));
}

void command_stream::drop_abandoned() {
    if (raw_expected() && !pending_.empty() && arrived_.front() - raw_since_ > silence) raw_count_ = 0;
    const auto silent = [](time before, time after) { return after - before > silence; };
    while (true) {
        const auto begin = arrived_.begin();
        const auto end = begin + static_cast<std::ptrdiff_t>(std::min(item_size(), pending_.size()));
        const auto last_before = std::adjacent_find(begin, end, silent);
        if (last_before == end) return;
        drop(static_cast<std::size_t>(last_before - begin) + 1);
        // what follows a silence is a command
        raw_count_ = 0;
    }
}

} // namespace desk
