#pragma once

#include "soak/soak_files.h"
#include "support/monkey.h"
#include "support/robot_at_hand.h"

#include <cstdint>
#include <deque>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace desk::test {

/// What a soak has seen.
struct soak_summary {
    struct failure_seen {
        int count = 0;
        std::string sentence; // of the first one
    };
    int actions = 0;
    int rescues = 0;
    int fresh_starts = 0;
    std::int64_t virtual_ms = 0;
    std::int64_t commands = 0; // each try of them
    std::int64_t parts_of_answers = 0;
    std::map<std::string, int> answers;           // by "ok", "refused", "fatal 53"
    std::map<std::string, failure_seen> failures; // by number and text
    std::string faults;                           // by kind, as the robot tells it
    std::set<std::string> controls;               // that did something
    std::uint64_t hash = 14695981039346656037U;   // of every line and its answer
    std::vector<std::string> problems;            // what must not be
};

/// A desk in bad weather: a monkey that does anything, a generator whose answers go wrong, files and ports that come
/// and go. After each action no button may be left at work; now and then the weather turns good, and all must work
/// again. The same seed does the same.
class soak {
public:
    explicit soak(std::uint64_t seed);

    void act(int actions);
    const soak_summary& summary() const { return summary_; }

private:
    std::string some_action();
    /// From now on the operator goes about a job, as far as the weather lets.
    void take_some_road();
    /// A press of a button that talks to the generator, of those that can be pressed now.
    std::string some_exchange();
    void some_weather();
    std::string some_faults();
    std::string some_port();
    std::string some_sink();
    void stop_and_start();
    void start();

    void rescue();
    void close_windows();
    void expect(const std::string& line, const std::string& answer);

    std::string say(const std::string& line);
    void look_after(const std::string& answer);
    void look_at_failure(const std::string& answer);
    void look_at_rules();
    void look_at_clock();
    void look_around();
    void remember_transcript();
    void remember_control(const std::string& said);
    void problem(const std::string& what);

    int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint64_t>(limit)); }
    template <class Choices>
    auto one_of(const Choices& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

    std::mt19937_64 random_;
    soak_files files_;
    robot_at_hand desk_;
    monkey operator_;
    soak_summary summary_;
    std::deque<std::string> road_; // still to be said
    std::int64_t clock_ms_ = 0;
    std::string last_lines_; // before a problem, for whoever has to find it
};

} // namespace desk::test
