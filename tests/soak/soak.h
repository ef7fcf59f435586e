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

struct soak_summary {
    struct failure_seen {
        int count = 0;
        std::string sentence; // of the first one
    };
    int actions = 0;
    int rescues = 0;
    int fresh_starts = 0;
    std::int64_t virtual_ms = 0;
    std::int64_t commands = 0; // each try counts
    std::int64_t parts_of_answers = 0;
    std::map<std::string, int> answers;           // by "ok", "refused", "fatal 53"
    std::map<std::string, failure_seen> failures; // by number and text
    std::string faults;                           // by kind, as reported by the robot
    std::set<std::string> controls;               // controls that had an effect
    std::uint64_t hash = 14695981039346656037U;   // of every line and its answer
    std::vector<std::string> problems;            // violations
};

/// A stress test: random actions, a generator with faulty answers, files and ports that come and go. After each
/// action no button may be left busy; now and then all faults end, and everything must work again. The same seed
/// repeats the same actions.
class soak {
public:
    explicit soak(std::uint64_t seed);

    void act(int actions);
    const soak_summary& summary() const { return summary_; }

private:
    std::string some_action();
    /// Queues the steps of an operator's task, as far as the faults allow.
    void start_some_task();
    /// Presses a random enabled button that talks to the generator.
    std::string some_exchange();
    void some_disturbance();
    std::string some_faults();
    std::string some_port();
    std::string some_sink();
    void stop_and_start();
    void start();

    void rescue();
    void close_windows();
    void expect(const std::string& line, const std::string& answer);

    std::string say(const std::string& line);
    void check_after(const std::string& answer);
    void check_failure(const std::string& answer);
    void check_rules();
    void check_clock();
    void check_recovery();
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
    std::deque<std::string> task_; // still to be sent
    std::int64_t clock_ms_ = 0;
    std::string last_lines_; // before a problem, for diagnosis
};

} // namespace desk::test
