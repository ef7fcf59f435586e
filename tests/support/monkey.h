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

/// An operator without a plan: does anything that can be done, at random, also in the middle of exchanges, with a
/// generator that answers well, badly or not at all. The same seed does the same things.
class monkey {
public:
    /// It chooses among these files of the directory when it is asked for one.
    monkey(robot_at_hand& desk, std::filesystem::path directory, std::vector<std::string> files, std::uint64_t seed)
        : desk_(desk), directory_(std::move(directory)), files_(std::move(files)), random_(seed) {}

    /// So many actions of the operator. A program that has ended is started anew.
    void act(int actions);

    /// One action, with what may come before it and in the middle of it. Gives the answer; where it is a fatal one,
    /// the program has to be started anew.
    std::string act_once();

    /// A click on some node of the tree, as a line for the robot.
    std::string some_node();

    /// Says a line of somebody else's to the desk.
    std::string say(const std::string& line);

    /// Every line that was said and its answer; "$DIR" stands for the directory.
    const std::string& transcript() const { return transcript_; }
    /// The same since the last call, for whoever can't keep all of it.
    std::string take_transcript() { return std::exchange(transcript_, {}); }
    /// How often an answer began with each of "ok", "refused", "fatal 35600", ...
    const std::map<std::string, int>& outcomes() const { return outcomes_; }
    /// Answers that are none of the three kinds.
    const std::vector<std::string>& nonsense() const { return nonsense_; }

private:
    void look_at_controls();
    /// One action on some control, as a line for the robot.
    std::string some_action();
    std::string action_on(const std::string& name, const std::string& kind);
    /// What it will say to the next box or file dialog.
    std::string some_choice();
    /// Something that the generator or the line does.
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
    std::string modal_; // the modal window that they belong to; empty: the main window
    std::string transcript_;
    std::map<std::string, int> outcomes_;
    std::vector<std::string> nonsense_;
};

} // namespace desk::test
