#pragma once

#include "soak/simulator_memory.h"
#include "support/temporary_directory.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace desk::test {

using json = nlohmann::ordered_json;

/// What a command of velotrace_cli has answered, and what the generator held before and after.
struct answered_command {
    std::vector<json> answers; ///< the last one is the failure, if it failed
    simulator_memory before;
    simulator_memory after;

    const json& last() const { return answers.back(); }
    int status() const { return last().contains("error") ? last().at("status").get<int>() : 0; }
};

/// A command, and what its answer must agree with.
struct tried_command {
    using rule = std::function<bool(const answered_command&)>;

    std::string line;
    std::string kind;      ///< for the summary
    int answers = 1;       ///< without a failure
    bool uses_port = true; ///< unless it fails before
    int fixed_status = -1; ///< whatever the generator does; -1: none
    /// The status that an undisturbed generator leads to.
    std::function<int(const answered_command&)> status = [](const answered_command&) { return 0; };
    /// True of every success, even if the generator answers faultily; unless it stored something else.
    rule has = [](const answered_command&) { return true; };
    /// True of every answer of an undisturbed generator.
    rule agrees = [](const answered_command&) { return true; };
};

/// Makes random commands. Its files are in a folder of its own.
class cli_commands {
public:
    /// `generator` must outlive this.
    cli_commands(const simulator_control& generator, std::uint64_t seed);

    tried_command next();
    /// Needs an undisturbed generator: without its second answer the desk waits for minutes.
    tried_command erase();

    /// The catalogue's names, which `list` has answered.
    void take_names(std::vector<std::string> timings, std::vector<std::string> patterns);

private:
    tried_command set_row();
    tried_command status();
    tried_command panel();
    tried_command press();
    tried_command reset();
    tried_command version();
    tried_command list();
    tried_command color();
    tried_command text();
    tried_command favorites();
    tried_command autorun();
    tried_command edid_read();
    tried_command edid_verify();
    tried_command edid_write();
    tried_command edid_stamp();
    tried_command misused();
    tried_command without_file();
    tried_command comment();

    int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint64_t>(limit)); }
    int between(int least, int most) { return least + below(most - least + 1); }
    template <class Values>
    auto any_of(const Values& values) {
        return values.at(static_cast<std::size_t>(below(static_cast<int>(values.size()))));
    }
    /// A sink, and the option that chooses it.
    int some_sink(std::string& line);
    bytes some_edid();
    std::string file(const std::string& name) const { return (folder_ / name).string(); }
    void put(const std::string& name, const bytes& content) const;

    const simulator_control& generator_;
    std::mt19937_64 random_;
    temporary_directory folder_;
    std::vector<std::string> timings_;
    std::vector<std::string> patterns_;
    std::string firmware_; // as first answered
};

} // namespace desk::test
