#pragma once

#include "generator/answer.h"
#include "robot/tokens.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace desk::robot {

/// An answer as it is scripted: parts, of which some stand for the command itself.
struct scripted_answer {
    struct part {
        double pause_ms = 0;
        bool echo = false;
        std::string bytes;
    };
    std::vector<part> parts; ///< none: no answer

    answer to(std::string_view command) const;
    bool has_echo() const;
};

/// The parts of an answer from words: a JSON string (code = byte), `echo`, `hex:0AFF`, `+MS`, or `none` alone.
/// Nothing where a word is none of these.
std::optional<scripted_answer> scripted_answer_of(const std::vector<token>& tokens, std::size_t from);

/// The scripted answers to each command. Several answers to the same command are used in turn, and the last one is
/// kept for all that follow, until a new one replaces it.
class reply_script {
public:
    /// `command` is six characters, or a start with "*" for any rest.
    void add(const std::string& command, scripted_answer reply);
    void add_raw(scripted_answer reply) { raw_.add(std::move(reply)); }
    void clear(const std::string& command) { turns_.erase(command); }
    void clear_raw() { raw_ = {}; }
    void clear();

    /// The answer whose turn it is: an exact command goes before a "*", a longer one before a shorter.
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
