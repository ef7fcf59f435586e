// Thousands of commands through `velotrace_cli --json - --keep-going` with a simulated generator that answers faultily,
// falls silent and is unplugged. Each command has exactly one answer (edid stamp one a unit) and JSON in it; a success
// agrees with what the generator holds; without a fault the command succeeds; memory does not grow.

#include "soak/cli_commands.h"
#include "soak/process_resources.h"
#include "soak/stall_watch.h"
#include "support/desk_files.h"
#include "support/piped_program.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <thread>

namespace {

using namespace desk::test;
using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Longer than any command that is not hanging.
constexpr milliseconds patience = 60s;
// shorter than this, a busy program takes the result for a part of the echo
constexpr milliseconds erase_time = 500ms;
#ifdef WITH_SANITIZERS
constexpr std::size_t most_growth_kib = 8192;
#else
constexpr std::size_t most_growth_kib = 512;
#endif

constexpr milliseconds unanswered_command = 2s;
/// A program that waits this long for a processor, or stands still with the machine, can miss an answer.
constexpr milliseconds starvation = 100ms;
constexpr int most_excused = 2; ///< tries of a command that fails for no other reason

// what a fault can still disturb after it
constexpr milliseconds until_line_is_quiet = 900ms;
constexpr milliseconds until_late_answer = 3300ms;
constexpr milliseconds until_cable_is_back = 5500ms;

/// The weather changes after so many commands; the first of them have no faults.
constexpr int spell = 150;
constexpr int calm_spell = 30;
constexpr const char* fault_kinds = " drop drop repeat repeat garble garble garble delay delay late late short short"
                                    " long long forget forget miswrite miswrite silent unplug";

class batch_soak {
public:
    explicit batch_soak(std::uint64_t seed) : seed_(seed), random_(seed), commands_(control_, seed) {
        generator_.next_line(patience); // the terminal exists
        std::filesystem::copy_file(VELOTRACE_CLI, folder_ / "velotrace_cli");
        folder_.put("marlo_rs232.ini", usual_settings);
        std::filesystem::copy_file(FIRST_FILES "/timing_pattern.ini", folder_ / "timing_pattern.ini");
        control_.send("erase " + std::to_string(erase_time.count()));
        cli_.emplace(std::vector<std::string>{(folder_ / "velotrace_cli").string(), "--json", "--port",
                                              (folder_ / "line").string(), "-", "--keep-going"},
                     folder_ / "errors");
        commands_.take_names(names("timings"), names("patterns"));
    }

    void run(int count) {
        const auto start = clock_type::now();
        for (number_ = 0; number_ < count; ++number_) {
            change_weather();
            if (number_ == count / 10) first_resources_ = resources();
            try_command(number_ % spell == calm_spell / 2 ? commands_.erase() : commands_.next());
        }
        control_.send("faults off");
        const process_resources last = resources();
        report(count, std::chrono::duration<double>(clock_type::now() - start).count(), last);
        if (last.memory_kib > first_resources_.memory_kib + most_growth_kib) fail("memory grows");
        if (last.descriptors != first_resources_.descriptors) fail("descriptors are lost");
        end();
    }

private:
    [[noreturn]] void fail(const std::string& why) const {
        throw std::runtime_error("command " + std::to_string(number_) + ", \"" + line_ + "\": " + why);
    }

    std::vector<std::string> names(const std::string& list) {
        const json answer = answers_to("list " + list, 1).back();
        std::vector<std::string> found;
        for (const json& row : answer.at("rows"))
            found.push_back(row.at("name"));
        return found;
    }

    /// Gives a line to the program and reads the answers.
    std::vector<json> answers_to(const std::string& line, int count, const std::function<void()>& meanwhile = {}) {
        line_ = line;
        cli_->type(line + "\n");
        if (meanwhile) meanwhile();
        std::vector<json> answers;
        while (count > 0) {
            const auto text = next_line();
            if (!text) fail("the program has ended");
            // before its answer `edid read -` prints the file
            if (line.starts_with("edid read -") && !text->starts_with('{')) continue;
            json answer = json::parse(*text, nullptr, false);
            if (!answer.is_object()) fail("no JSON: " + *text);
            answers.push_back(std::move(answer));
            const json& last = answers.back();
            if (last.contains("error")) break;
            const bool more_follows = last.contains("result") && last.at("result") != "PASS";
            if (!more_follows) --count;
        }
        return answers;
    }

    std::optional<std::string> next_line() {
        try {
            return cli_->next_line(patience);
        } catch (const std::runtime_error& e) {
            fail(e.what());
        }
    }

    void change_weather() {
        const int place = number_ % spell;
        if (place == 0) {
            control_.send("faults off");
            std::this_thread::sleep_until(disturbed_until_);
            // the program notices with a command that the cable was out
            answers_to("version", 1);
            answers_to("version", 1);
            has_stale_port_ = false;
        } else if (place == calm_spell) {
            control_.send("faults 4 seed " + std::to_string(seed_ + static_cast<unsigned>(number_)) + fault_kinds);
        }
    }

    /// A busy machine excuses two failures of a command that no fault has disturbed.
    void try_command(const tried_command& c) {
        for (int tries = 0; !try_once(c, tries == most_excused); ++tries)
            ++excused_;
    }

    bool try_once(const tried_command& c, bool is_last) {
        const int accident = number_ % spell < calm_spell ? -1 : static_cast<int>(random_() % 300);
        answered_command a;
        a.before = control_.memory();
        std::function<void()> meanwhile;
        const bool silent = accident == 0;
        const bool unplugged_before = accident == 1 || accident == 2;
        const bool unplugged_meanwhile = accident == 3 || accident == 4;
        if (silent) control_.send("silent");
        if (unplugged_before) control_.send("unplug");
        if (unplugged_meanwhile) {
            meanwhile = [this, after = milliseconds(random_() % 200)] {
                std::this_thread::sleep_for(after);
                control_.send("unplug");
            };
        }
        const bool accidental = silent || unplugged_before || unplugged_meanwhile;
        const auto start = clock_type::now();
        const auto starved = starved_so_far();
        a.answers = answers_to(c.line, c.answers, meanwhile);
        a.after = control_.memory();
        longest_ = std::max(longest_, clock_type::now() - start);
        const bool is_starved = starved_so_far() - starved > starvation || stalls_.last() > start;
        if (is_starved) ++starved_;
        note_faults(a, accidental || is_starved);
        const bool good = a.answers.empty() || check(c, a, unplugged_before, is_last);
        if (silent) control_.send("speak");
        if (unplugged_before || unplugged_meanwhile) {
            control_.send("plug");
            ++unplugged_;
            has_stale_port_ = true;
        }
        if (silent) ++silences_;
        // few commands while a fault has the cable out
        if (c.uses_port && !a.answers.empty() && a.status() == 3) std::this_thread::sleep_for(200ms);
        return good;
    }

    /// The program and the generator together.
    std::chrono::nanoseconds starved_so_far() const {
        return starvation_of_process(cli_->id()) + starvation_of_process(generator_.id());
    }

    /// Whether anything can have disturbed this command, and for how long it goes on.
    void note_faults(const answered_command& a, bool accidental) {
        const auto now = clock_type::now();
        disturbed_ = accidental || has_stale_port_ || now < disturbed_until_;
        lied_ = false;
        for (const auto& [kind, count] : a.after.faults) {
            const auto before = a.before.faults.find(kind);
            if (before != a.before.faults.end() && before->second == count) continue;
            lied_ = lied_ || kind == "forget" || kind == "miswrite";
            disturbed_ = true;
            if (kind == "unplug") has_stale_port_ = true;
            const milliseconds lasting = kind == "unplug" ? until_cable_is_back
                                         : kind == "late" ? until_late_answer
                                                          : until_line_is_quiet;
            disturbed_until_ = std::max(disturbed_until_, now + lasting);
        }
        if (accidental) disturbed_until_ = std::max(disturbed_until_, now + until_line_is_quiet);
    }

    /// Whether a rule holds, or soon does: a busy simulator may not have carried out what it does not answer.
    bool holds(const tried_command::rule& rule, answered_command& a) const {
        const auto limit = clock_type::now() + unanswered_command;
        while (!rule(a)) {
            if (clock_type::now() > limit) return false;
            std::this_thread::sleep_for(20ms);
            a.after = control_.memory();
        }
        return true;
    }

    /// False: a failure that a busy machine can explain; `is_last`: none is excused.
    bool check(const tried_command& c, answered_command& a, bool unplugged, bool is_last) {
        const int status = a.status();
        ++statuses_[status];
        ++kinds_[c.kind];
        if (first_failure_ == 0) first_failure_ = status;
        const std::string shown = a.last().dump() + ", but the generator: " + control_.send("state");
        if (status != 0 && a.last().at("error").get<std::string>().empty()) fail("no reason: " + shown);
        if (c.fixed_status >= 0 && status != c.fixed_status) fail("status: " + shown);
        if (c.uses_port && unplugged && status != 1 && status != 3) fail("there is no cable: " + shown);
        if (status == 2 && c.fixed_status != 2) fail("misused: " + shown);
        if (status == 0 && !lied_ && !holds(c.has, a)) fail("not so: " + shown);
        // it has opened the port anew, or closed it
        if (c.uses_port && status != 2) has_stale_port_ = has_stale_port_ && now_is_out();
        if (disturbed_) return true;
        ++undisturbed_;
        const bool good = (c.fixed_status >= 0 || status == c.status(a)) && holds(c.agrees, a);
        if (!good && is_last) fail("without a fault: " + shown);
        return good;
    }

    /// Whether a fault has the cable out, possibly.
    bool now_is_out() const { return clock_type::now() < disturbed_until_; }

    /// Of the program while its port is open and idle.
    process_resources resources() {
        control_.send("faults off");
        std::this_thread::sleep_until(disturbed_until_);
        answers_to("set timing 1", 1);
        if (answers_to("set timing 1", 1).back().contains("error")) fail("the line is not back");
        return resources_of_process(std::to_string(cli_->id()));
    }

    void report(int count, double seconds, const process_resources& last) {
        std::cout << "seed " << seed_ << ": " << count << " commands in " << seconds << " s, the longest "
                  << std::chrono::duration<double>(longest_).count() << " s; " << undisturbed_ << " without a fault, "
                  << unplugged_ << " unplugged, " << silences_ << " in silence, " << starved_
                  << " on a processor too busy, " << excused_ << " tried again\nstatus:";
        for (const auto& [status, times] : statuses_)
            std::cout << " " << times << " x " << status;
        std::cout << "\nfaults:";
        for (const auto& [kind, times] : control_.memory().faults)
            std::cout << " " << kind << " " << times;
        std::cout << "\ncommands:";
        for (const auto& [kind, times] : kinds_)
            std::cout << " " << times << " x " << kind << ",";
        std::cout << "\nmemory: " << first_resources_.memory_kib << " KiB and " << first_resources_.descriptors
                  << " descriptors after the first tenth, " << last.memory_kib << " KiB and " << last.descriptors
                  << " at the end" << std::endl;
    }

    void end() {
        line_ = "the end of the input";
        cli_->end_input();
        if (const auto more = cli_->next_line(patience)) fail("one answer too many: " + *more);
        const int status = cli_->wait().status;
        if (status != first_failure_)
            fail("status " + std::to_string(status) + ", not that of the first failure, " +
                 std::to_string(first_failure_));
        std::ifstream errors(folder_ / "errors");
        for (std::string line; std::getline(errors, line);) {
            if (!line.starts_with("velotrace_cli: ") && !line.starts_with("Writing unit ")) fail(line);
        }
    }

    std::uint64_t seed_;
    std::mt19937_64 random_;
    temporary_directory folder_;
    piped_program generator_{
        {VELOTRACE_SIM, "--quiet", "--control", (folder_ / "control").string(), (folder_ / "line").string()},
        folder_ / "generator_errors"};
    simulator_control control_{folder_ / "control"};
    cli_commands commands_;
    std::optional<piped_program> cli_;

    int number_ = 0;
    std::string line_;
    bool disturbed_ = false;      // the last command
    bool lied_ = false;           // the generator, about what it stored
    bool has_stale_port_ = false; // the program may hold a port that was unplugged
    clock_type::time_point disturbed_until_;

    int first_failure_ = 0;
    int undisturbed_ = 0;
    int unplugged_ = 0;
    int silences_ = 0;
    int starved_ = 0;
    int excused_ = 0;
    stall_watch stalls_{starvation};
    clock_type::duration longest_{0};
    process_resources first_resources_;
    std::map<int, int> statuses_;
    std::map<std::string, int> kinds_;
};

/// The sanitizers keep freed memory, by default 256 MB.
void keep_little_freed_memory() {
    const char* const options = std::getenv("ASAN_OPTIONS");
    ::setenv("ASAN_OPTIONS", (std::string(options == nullptr ? "" : options) + ":quarantine_size_mb=1").c_str(), 1);
}

} // namespace

int main(int argument_count, char** arguments) {
    const int count = argument_count > 1 ? std::atoi(arguments[1]) : 0;
    if (count < 10 || argument_count > 3) {
        std::cerr << "usage: cli_batch COMMANDS [SEED]\n";
        return 2;
    }
    try {
        keep_little_freed_memory();
        batch_soak(argument_count == 3 ? std::strtoull(arguments[2], nullptr, 10) : 1).run(count);
    } catch (const std::exception& e) {
        std::cerr << "cli_batch: " << e.what() << '\n';
        return 1;
    }
    return 0;
}
