#include "robot/reply_script.h"

#include "runtime/windows_1252.h"

#include <algorithm>

namespace desk::robot {

answer scripted_answer::to(std::string_view command) const {
    answer result;
    for (const part& p : parts)
        result.push_back({p.pause_ms, bytes_of(p.echo ? command : p.bytes)});
    return result;
}

bool scripted_answer::has_echo() const {
    return std::any_of(parts.begin(), parts.end(), [](const part& p) { return p.echo; });
}

std::optional<scripted_answer> scripted_answer_of(const std::vector<token>& tokens, std::size_t from) {
    scripted_answer result;
    if (from >= tokens.size()) return std::nullopt;
    if (tokens.size() == from + 1 && !tokens[from].quoted && tokens[from].text == "none") return result;
    double pause = 0;
    for (std::size_t i = from; i < tokens.size(); ++i) {
        const token& w = tokens[i];
        if (!w.quoted && w.text.starts_with('+')) {
            const auto ms = number_of({w.text.substr(1), false, 0});
            if (!ms || *ms < 0) return std::nullopt;
            pause += *ms;
            continue;
        }
        scripted_answer::part p{pause, false, ""};
        pause = 0;
        if (w.quoted) {
            // a character above 255 has no byte
            p.bytes.clear();
            for (const char32_t c : characters_of(w.text)) {
                if (c > 0xFF) return std::nullopt;
                p.bytes.push_back(static_cast<char>(c));
            }
        } else if (w.text == "echo") {
            p.echo = true;
        } else if (w.text.starts_with("hex:")) {
            const auto data = bytes_of_hex(std::string_view(w.text).substr(4));
            if (!data) return std::nullopt;
            p.bytes = *data;
        } else {
            return std::nullopt;
        }
        result.parts.push_back(std::move(p));
    }
    return result;
}

void reply_script::turns::add(scripted_answer reply) {
    if (last_was_used_) queue_.clear();
    last_was_used_ = false;
    queue_.push_back(std::move(reply));
}

std::optional<scripted_answer> reply_script::turns::take() {
    if (queue_.empty()) return std::nullopt;
    const scripted_answer reply = queue_.front();
    if (queue_.size() > 1)
        queue_.pop_front();
    else
        last_was_used_ = true;
    return reply;
}

void reply_script::add(const std::string& command, scripted_answer reply) { turns_[command].add(std::move(reply)); }

void reply_script::clear() {
    turns_.clear();
    clear_raw();
}

std::optional<scripted_answer> reply_script::take(std::string_view command) {
    const auto exact = turns_.find(std::string(command));
    if (exact != turns_.end()) return exact->second.take();
    for (std::size_t length = command.size() + 1; length-- > 0;) {
        const auto start = turns_.find(std::string(command.substr(0, length)) + "*");
        if (start != turns_.end()) return start->second.take();
    }
    return std::nullopt;
}

} // namespace desk::robot
