#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// What can go wrong with an answer of the generator.
enum class fault { none, drop, repeat, garble, delay, shorten, lengthen, late, silent, unplug, forget, miswrite };

/// Every fault but none.
inline constexpr std::array all_faults = {fault::drop,    fault::repeat,   fault::garble,  fault::delay,
                                          fault::shorten, fault::lengthen, fault::late,    fault::silent,
                                          fault::unplug,  fault::forget,   fault::miswrite};

/// The name of a fault in commands and in the traffic: "drop", "short".
std::string_view fault_name(fault f);

/// Decides for each answer in turn whether it is faulty, and how. Equal plans make equal decisions.
class fault_plan {
public:
    struct decision {
        fault what = fault::none;
        std::uint32_t size = 0; // the extent of the fault, in units of its own
    };

    /// No faults.
    fault_plan() = default;

    /// `percent` % of answers are faulty. A kind that is listed twice is twice as frequent; none listed: all.
    /// Throws failure::invalid_procedure_call if `percent` is not 0 to 100.
    fault_plan(int percent, std::uint64_t seed, std::vector<fault> kinds);

    decision next();

    /// Whether it never decides for a fault.
    bool idle() const { return percent_ == 0; }

    /// One line for the operator.
    std::string text() const;

private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }

    int percent_ = 0;
    std::uint64_t seed_ = 0;
    std::vector<fault> kinds_;
    std::mt19937_64 random_;
};

/// Parses a plan: "off", or "RATE [seed N] [KIND...]". Throws failure::invalid_procedure_call with a reason for the
/// operator.
fault_plan fault_plan_of(const std::vector<std::string_view>& words);

} // namespace desk
