#include "generator/fault_plan.h"

#include "runtime/failure.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

namespace desk {

namespace {

constexpr std::uint64_t default_seed = 1;

[[noreturn]] void not_understood(const std::string& why) {
    throw runtime_failure(failure::invalid_procedure_call, why);
}

template <class Number>
Number number_of(std::string_view word, Number highest) {
    Number value = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || value > highest) {
        not_understood("\"" + std::string(word) + "\" is not a whole number from 0 to " + std::to_string(highest));
    }
    return value;
}

fault fault_of(std::string_view word) {
    const auto found =
        std::find_if(all_faults.begin(), all_faults.end(), [&](fault f) { return fault_name(f) == word; });
    if (found == all_faults.end()) not_understood("\"" + std::string(word) + "\" is not a kind of fault");
    return *found;
}

} // namespace

std::string_view fault_name(fault f) {
    switch (f) {
    case fault::none:
        return "none";
    case fault::drop:
        return "drop";
    case fault::repeat:
        return "repeat";
    case fault::garble:
        return "garble";
    case fault::delay:
        return "delay";
    case fault::shorten:
        return "short";
    case fault::lengthen:
        return "long";
    case fault::late:
        return "late";
    case fault::silent:
        return "silent";
    case fault::unplug:
        return "unplug";
    case fault::forget:
        return "forget";
    case fault::miswrite:
        return "miswrite";
    }
    return "";
}

fault_plan::fault_plan(int percent, std::uint64_t seed, std::vector<fault> kinds)
    : percent_(percent), seed_(seed), kinds_(std::move(kinds)), random_(seed) {
    if (percent < 0 || percent > 100) not_understood(std::to_string(percent) + " % is not from 0 to 100 %");
    if (kinds_.empty()) kinds_.assign(all_faults.begin(), all_faults.end());
}

fault_plan::decision fault_plan::next() {
    if (idle()) return {};
    // a good answer takes as many random numbers as a faulty one: a higher rate adds faults and moves none
    const bool good = below(100) >= static_cast<std::uint32_t>(percent_);
    const fault what = kinds_.at(below(static_cast<std::uint32_t>(kinds_.size())));
    const std::uint32_t size = below(std::numeric_limits<std::uint32_t>::max());
    return good ? decision{} : decision{what, size};
}

std::string fault_plan::text() const {
    if (idle()) return "No faults by chance.";
    std::string text = std::to_string(percent_) + " % of answers are faulty, seed " + std::to_string(seed_) + ":";
    for (const fault f : kinds_)
        text.append(" ").append(fault_name(f));
    return text;
}

fault_plan fault_plan_of(const std::vector<std::string_view>& words) {
    if (words.empty()) not_understood("faults: a rate from 0 to 100 is missing");
    if (words.size() == 1 && words.front() == "off") return {};
    const int percent = number_of(words.front(), 100);
    std::uint64_t seed = default_seed;
    std::size_t next = 1;
    if (next < words.size() && words[next] == "seed") {
        if (words.size() == 2) not_understood("faults: the seed is missing");
        seed = number_of(words[2], std::numeric_limits<std::uint64_t>::max());
        next = 3;
    }
    std::vector<fault> kinds;
    for (; next < words.size(); ++next)
        kinds.push_back(fault_of(words[next]));
    return {percent, seed, std::move(kinds)};
}

} // namespace desk
