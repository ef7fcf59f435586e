#pragma once

#include "generator/answer.h"
#include "generator/fault_plan.h"
#include "generator/simulated_generator.h"
#include "runtime/bytes.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string_view>

namespace desk {

/// The simulated generator with random faults from a plan. A command that has no answer and changes nothing does not
/// advance the plan.
class faulty_generator {
public:
    /// `generator` must outlive this.
    explicit faulty_generator(simulated_generator& generator) : generator_(generator) {}

    /// From now on follows this plan.
    void follow(fault_plan plan);
    const fault_plan& plan() const { return plan_; }

    /// The generator's own functions, with the faults of the plan.
    answer command(std::string_view six);
    answer raw_block(std::string_view command, const bytes& block);

    /// If the last command or block pulled the cable out: for how long. Reported once; the owner of the line carries it
    /// out.
    std::optional<std::chrono::milliseconds> take_absence();

    /// The fault of the last command or block.
    fault last() const { return last_; }

    /// The number of faults so far, by kind.
    const std::map<fault, int>& counts() const { return counts_; }

private:
    answer carry_out(const std::function<answer()>& rightly, const std::function<void(std::uint32_t)>& wrongly);
    void lie(const fault_plan::decision& d, const generator_state& before,
             const std::function<void(std::uint32_t)>& wrongly);
    answer spoil(answer parts, const fault_plan::decision& d);
    void store_neighbour(std::string_view six);
    void note(fault f);

    simulated_generator& generator_;
    fault_plan plan_;
    std::uint32_t silent_answers_ = 0; // still to be dropped
    std::optional<std::chrono::milliseconds> absence_;
    fault last_ = fault::none;
    std::map<fault, int> counts_;
};

} // namespace desk
