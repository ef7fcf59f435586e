#pragma once

#include "support/robot_at_hand.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace desk::test {

/// A random operator: performs any action, even during exchanges, with a generator that answers well, badly or not at
/// all. The same seed repeats the same actions.
class monkey {
public:
    /// File dialogs get one of `files` in `directory`.
    monkey(robot_at_hand& desk, std::filesystem::path directory, std::vector<std::string> files, std::uint64_t seed)
        : desk_(desk), directory_(std::move(directory)), files_(std::move(files)), random_(seed) {}

    /// Performs `actions` actions. Restarts a program that has ended.
    void act(int actions);

    /// Performs one action, possibly prepared or interrupted by others, and returns the answer. After a fatal answer,
    /// restart the program.
    std::string act_once();

    /// A click on a random tree node, as a line for the robot.
    std::string some_node();

    /// Sends a line of the caller's to the desk.
    std::string say(const std::string& line);

    /// Every line and its answer; "$DIR" replaces the directory.
    const std::string& transcript() const { return transcript_; }
    /// The transcript since the last call, to limit its memory.
    std::string take_transcript() { return std::exchange(transcript_, {}); }
    /// Number of answers by kind: "ok", "refused", "fatal 35600", ...
    const std::map<std::string, int>& outcomes() const { return outcomes_; }
    /// Answers of no known kind.
    const std::vector<std::string>& nonsense() const { return nonsense_; }

private:
    void look_at_controls();
    /// A random action on a random control, as a line for the robot.
    std::string some_action();
    std::string action_on(const std::string& name, const std::string& kind);
    /// A random answer for the next box or file dialog.
    std::string some_choice();
    /// A random fault of the generator or the line.
    std::string some_trouble();
    int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint64_t>(limit)); }
    template <class Choices>
    auto one_of(const Choices& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

    robot_at_hand& desk_;
    std::filesystem::path directory_;
    std::vector<std::string> files_;
    std::mt19937_64 random_;
    std::vector<std::pair<std::string, std::string>> controls_; // name, kind
    std::string modal_; // the modal window that owns them; empty: the main window
    std::string transcript_;
    std::map<std::string, int> outcomes_;
    std::vector<std::string> nonsense_;
};

} // namespace desk::test
