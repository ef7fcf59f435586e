#pragma once

#include "generator/answer.h"
#include "generator/fault_plan.h"
#include "generator/simulated_generator.h"
#include "runtime/bytes.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string_view>

namespace desk {

/// The simulated generator, whose answers go wrong as a plan decides. What is not answered and changes nothing takes no
/// turn of the plan.
class faulty_generator {
public:
    /// `generator` must live as long as this.
    explicit faulty_generator(simulated_generator& generator) : generator_(generator) {}

    /// From now on this plan decides.
    void follow(fault_plan plan);
    const fault_plan& plan() const { return plan_; }

    /// As the generator's own, but with what the plan has decided.
    answer command(std::string_view six);
    answer raw_block(std::string_view command, const bytes& block);

    /// Where the last command or block has pulled the cable out: for how many milliseconds. Told once; only the owner
    /// of the line can do it.
    std::optional<int> take_absence_ms();

    /// What went wrong with the last command or block.
    fault last() const { return last_; }

    /// How often each kind went wrong so far.
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
    std::uint32_t silent_answers_ = 0; // still to come
    std::optional<int> absence_ms_;
    fault last_ = fault::none;
    std::map<fault, int> counts_;
};

} // namespace desk
