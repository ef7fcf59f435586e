#pragma once

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

namespace desk::cli {

using json = nlohmann::ordered_json;

/// The answer to a command, for programs and for people.
struct answer {
    json fields = json::object();
    std::string text;          ///< lines, each with its end
    bool confirmation = false; ///< nothing but the values that the command line gave: --quiet leaves it out
};

/// The exit status of the program.
enum class outcome : int {
    done = 0,
    failed = 1,   ///< the generator did not answer, or not as required
    misused = 2,  ///< the command line makes no sense; nothing was sent
    unusable = 3, ///< the port or a file can't be used
    broken = 4,   ///< a run-time failure of the desk
    ended = 130,  ///< by a signal
};

/// A sentence of the desk as the reason of a command_failure.
inline std::string without_full_stop(const std::string& sentence) {
    return sentence.substr(0, sentence.find_last_not_of('.') + 1);
}

/// The failure of a command; `what` is one sentence without a full stop.
class command_failure : public std::runtime_error {
public:
    command_failure(outcome status, const std::string& sentence, json fields = json::object())
        : std::runtime_error(sentence), status_(status), fields_(std::move(fields)) {}

    outcome status() const { return status_; }
    /// Further fields of the answer.
    const json& fields() const { return fields_; }

private:
    outcome status_;
    json fields_;
};

} // namespace desk::cli
