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

/// The word for a fault on a line and in the traffic: "drop", "short".
std::string_view fault_name(fault f);

/// Decides for one answer after the other whether it goes wrong, and how. The same plan decides the same each time.
class fault_plan {
public:
    struct decision {
        fault what = fault::none;
        std::uint32_t size = 0; // how much of it, in whatever it is counted
    };

    /// Nothing goes wrong.
    fault_plan() = default;

    /// So many of 100 answers go wrong. A kind that is named twice comes twice as often as the others; none named: all.
    /// Throws failure::invalid_procedure_call for a percentage that is none.
    fault_plan(int percent, std::uint64_t seed, std::vector<fault> kinds);

    decision next();

    /// Whether anything can go wrong at all.
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

/// The plan that words ask for: "off", or "RATE [seed N] [KIND...]". Throws failure::invalid_procedure_call where they
/// can't be understood, with a reason for the operator.
fault_plan fault_plan_of(const std::vector<std::string_view>& words);

} // namespace desk
