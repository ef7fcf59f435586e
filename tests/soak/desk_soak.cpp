// Runs the desk with random actions and faults, and prints what it has seen.

#include "soak/soak.h"

#include <charconv>
#include <chrono>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string_view>
#include <system_error>

namespace {

using desk::test::soak;
using desk::test::soak_summary;

constexpr std::uint64_t most_actions = 100'000'000;

/// The word as a number; 0 if it is none.
std::uint64_t number_of(std::string_view word) {
    std::uint64_t value = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    return error == std::errc() && stop == end ? value : 0;
}

soak_summary run(std::uint64_t seed, int actions) {
    soak weather(seed);
    weather.act(actions);
    return weather.summary();
}

void show(const soak_summary& seen, std::uint64_t seed, double seconds) {
    std::cout << "seed " << seed << ": " << seen.actions << " actions on " << seen.controls.size() << " controls, "
              << seen.commands << " commands sent, " << seen.parts_of_answers << " parts of answers, "
              << seen.virtual_ms / 1000 << " s on the desk's clock, " << seconds << " s\nanswers:";
    for (const auto& [kind, count] : seen.answers) {
        if (!kind.starts_with("fatal")) std::cout << " " << count << " " << kind << ",";
    }
    std::cout << " " << seen.fresh_starts << " fresh starts, " << seen.rescues << " times back to good weather\n";
    std::cout << "faults: " << seen.faults << "\nfailures:\n";
    for (const auto& [name, failures] : seen.failures)
        std::cout << "  " << failures.count << " x " << name << ", first " << failures.sentence.substr(0, 150) << "\n";
    std::cout << "hash of all answers: " << std::hex << seen.hash << std::dec << std::endl;
    for (const std::string& problem : seen.problems)
        std::cout << "PROBLEM at " << problem << std::endl;
}

} // namespace

int main(int count, char** words) {
    const std::uint64_t seed = count > 1 ? number_of(words[1]) : 0;
    const std::uint64_t actions = count > 2 ? number_of(words[2]) : 0;
    const std::uint64_t times = count > 3 ? number_of(words[3]) : 1;
    if (seed == 0 || actions == 0 || actions > most_actions || times == 0 || count > 4) {
        std::cerr << "usage: desk_soak SEED ACTIONS [TIMES]\n";
        return 2;
    }
    std::optional<std::uint64_t> hash;
    bool good = true;
    for (std::uint64_t i = 0; i < times; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const soak_summary seen = run(seed, static_cast<int>(actions));
        show(seen, seed, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        good = good && seen.problems.empty();
        if (hash.value_or(seen.hash) != seen.hash) {
            std::cout << "PROBLEM: the same seed gave another result" << std::endl;
            good = false;
        }
        hash = seen.hash;
    }
    return good ? 0 : 1;
}
