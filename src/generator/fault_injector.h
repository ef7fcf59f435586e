#pragma once

#include "generator/answer.h"
#include "generator/faulty_generator.h"
#include "generator/simulated_generator.h"
#include "runtime/bytes.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace desk {

/// The simulated generator with the faults that its operator injects: those of the next answers, refused commands,
/// silence, and random faults. These have a seed, so the same faults and the same traffic give the same answers.
class fault_injector {
public:
    /// `generator` must outlive this.
    explicit fault_injector(simulated_generator& generator) : generator_(generator), faulty_(generator) {}

    /// The generator's own functions, with the faults.
    answer command(std::string_view six);
    answer raw_block(std::string_view command, const bytes& block);

    /// The random fault of the last command or block.
    fault last_fault() const { return last_fault_; }
    /// See `faulty_generator`.
    std::optional<std::chrono::milliseconds> take_absence() { return faulty_.take_absence(); }

    /// Faults of the next `count` answers.
    void drop(int count) { drops_ = count; }
    void garble(int count) { garbles_ = count; }
    void delay(int count, std::chrono::milliseconds by);
    void shorten(int count, std::size_t missing_bytes);

    /// From now on `command` is not carried out but answered with `instead`; empty: not answered.
    void refuse(std::string command, std::string instead);
    void stop_refusing(const std::string& command) { refusals_.erase(command); }
    void stop_refusing_all() { refusals_.clear(); }

    void set_silent(bool silent) { silent_ = silent; }
    bool silent() const { return silent_; }

    /// From now on random faults follow this plan.
    void follow(fault_plan plan) { faulty_.follow(std::move(plan)); }
    const fault_plan& plan() const { return faulty_.plan(); }

    /// All faults, for a person: first those of the next answers, then a line for each refused command and for the
    /// random faults.
    std::string text() const;

private:
    answer with_next_faults(answer parts);

    simulated_generator& generator_;
    faulty_generator faulty_;
    std::map<std::string, std::string, std::less<>> refusals_;
    int drops_ = 0; // answers still to be dropped, garbled, shortened, delayed
    int garbles_ = 0;
    int shorts_ = 0;
    std::size_t missing_bytes_ = 0;
    int delays_ = 0;
    std::chrono::milliseconds delay_{0};
    fault last_fault_ = fault::none;
    bool silent_ = false;
};

} // namespace desk
