#pragma once

#include "generator/answer.h"
#include "generator/faulty_generator.h"
#include "generator/simulated_generator.h"
#include "runtime/bytes.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk {

/// Stands between the line and the generator and makes it misbehave, as one-line commands ask for. Chance comes from a
/// seed: the same lines and the same traffic give the same answers.
class misbehaviour {
public:
    /// `generator` must live as long as this.
    explicit misbehaviour(simulated_generator& generator) : generator_(generator), faulty_(generator) {}

    /// Carries out one line ("drop 2", "sink 1 none", "help") and gives the text to show, without a line end at its
    /// end. A line that can't be carried out changes nothing, and the text says why. Throws nothing.
    std::string take_line(std::string_view line);

    /// As the generator's own, but with the misbehaviour.
    answer command(std::string_view six);
    answer raw_block(std::string_view command, const bytes& block);

    /// What only the owner of the line can do: take the generator off the line, end the program.
    bool unplugged() const { return unplugged_; }
    bool quit_asked() const { return quit_asked_; }

    /// As told of `faulty_generator`: a cable that comes back by itself, and what chance has just done.
    std::optional<int> take_absence_ms() { return faulty_.take_absence_ms(); }
    fault last_fault() const { return last_fault_; }

    /// From now on chance follows this plan.
    void follow(fault_plan plan) { faulty_.follow(std::move(plan)); }

private:
    using words = std::vector<std::string_view>;

    std::string carry_out(const words& line);
    std::string drop(const words& line);
    std::string garble(const words& line);
    std::string delay(const words& line);
    std::string shorten(const words& line);
    std::string refuse(const words& line);
    std::string faults(const words& line);
    std::string sink(const words& line);
    std::string protect(const words& line);
    std::string erase_time(const words& line);
    std::string think_time(const words& line);
    std::string state_text() const;
    answer bend(answer parts);

    simulated_generator& generator_;
    faulty_generator faulty_;
    std::map<std::string, std::string, std::less<>> refusals_; // an empty answer: silence
    int drops_ = 0;                                            // answers still to be lost, garbled, delayed, shortened
    int garbles_ = 0;
    int shorts_ = 0;
    std::size_t missing_bytes_ = 0;
    int delays_ = 0;
    int delay_ms_ = 0;
    fault last_fault_ = fault::none;
    bool silent_ = false;
    bool unplugged_ = false;
    bool quit_asked_ = false;
};

} // namespace desk
