#include "generator/fault_injector.h"

#include <algorithm>

namespace desk {

void fault_injector::delay(int count, std::chrono::milliseconds by) {
    delays_ = count;
    delay_ = by;
}

void fault_injector::shorten(int count, std::size_t missing_bytes) {
    shorts_ = count;
    missing_bytes_ = missing_bytes;
}

void fault_injector::refuse(std::string command, std::string instead) {
    refusals_.insert_or_assign(std::move(command), std::move(instead));
}

answer fault_injector::command(std::string_view six) {
    last_fault_ = fault::none;
    if (const auto found = refusals_.find(six); found != refusals_.end()) {
        if (found->second.empty()) return {};
        return with_next_faults({{generator_.state.think_time, bytes_of(found->second)}});
    }
    answer parts = faulty_.command(six);
    last_fault_ = faulty_.last();
    return with_next_faults(std::move(parts));
}

answer fault_injector::raw_block(std::string_view command, const bytes& block) {
    last_fault_ = fault::none;
    // the desk still sends the block of a refused command; it is ignored
    if (refusals_.find(command) != refusals_.end()) return {};
    answer parts = faulty_.raw_block(command, block);
    last_fault_ = faulty_.last();
    return with_next_faults(std::move(parts));
}

answer fault_injector::with_next_faults(answer parts) {
    if (parts.empty() || silent_) return {};
    if (drops_ > 0) {
        --drops_;
        return {};
    }
    if (delays_ > 0) {
        --delays_;
        parts.front().pause += delay_;
    }
    const auto longest = std::max_element(parts.begin(), parts.end(),
                                          [](const auto& a, const auto& b) { return a.data.size() < b.data.size(); });
    if (shorts_ > 0) {
        --shorts_;
        longest->data.resize(longest->data.size() - std::min(longest->data.size(), missing_bytes_));
    }
    if (garbles_ > 0 && !longest->data.empty()) {
        --garbles_;
        // turns a digit of a short answer into a letter
        longest->data.at(longest->data.size() / 2) ^= 0x40;
    }
    return parts;
}

std::string fault_injector::text() const {
    std::string text = std::to_string(drops_) + " to drop, " + std::to_string(garbles_) + " to garble, " +
                       std::to_string(delays_) + " to delay, " + std::to_string(shorts_) + " to shorten";
    for (const auto& [command, instead] : refusals_)
        text.append("\nrefuses ").append(command).append(" with ").append(instead.empty() ? "silence" : instead);
    text.append("\n").append(plan().text());
    for (const auto& [kind, count] : faulty_.counts())
        text.append("\n  ").append(fault_name(kind)).append(": ").append(std::to_string(count));
    return text;
}

} // namespace desk
