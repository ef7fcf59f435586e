#pragma once

#include "generator/answer.h"
#include "robot/tokens.h"

#include <chrono>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace desk::robot {

/// A scripted answer: parts, some of which echo the command.
struct scripted_answer {
    struct part {
        std::chrono::milliseconds pause{0};
        bool echo = false;
        std::string bytes;
    };
    std::vector<part> parts; ///< none: no answer

    answer to(std::string_view command) const;
    bool has_echo() const;
};

/// Parses an answer from the tokens at `from` on: JSON strings (code = byte), `echo`, `hex:0AFF` and `+MS`, or only
/// `none`. None if a token is anything else.
std::optional<scripted_answer> scripted_answer_of(const std::vector<token>& tokens, std::size_t from);

/// The scripted answers to each command. Several answers to the same command are used in turn; the last one is repeated
/// until a new one replaces it.
class reply_script {
public:
    /// `command` is six characters, or a prefix followed by "*".
    void add(const std::string& command, scripted_answer reply);
    void add_raw(scripted_answer reply) { raw_.add(std::move(reply)); }
    void clear(const std::string& command) { turns_.erase(command); }
    void clear_raw() { raw_ = {}; }
    void clear();

    /// The next answer: that of the exact command, else that of the longest matching prefix.
    std::optional<scripted_answer> take(std::string_view command);
    std::optional<scripted_answer> take_raw() { return raw_.take(); }

private:
    class turns {
    public:
        void add(scripted_answer reply);
        std::optional<scripted_answer> take();

    private:
        std::deque<scripted_answer> queue_;
        bool last_was_used_ = false;
    };

    std::map<std::string, turns> turns_;
    turns raw_;
};

} // namespace desk::robot
