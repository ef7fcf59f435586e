// A monkey test: random clicks at random moments of random exchanges.

#include "generator/sink_edids.h"
#include "support/desk_fixture.h"
#include "support/monkey.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace desk::robot {
namespace {

constexpr int actions = 2000;

struct outcome {
    std::string transcript;
    std::map<std::string, int> counts;
    std::vector<std::string> nonsense;
};

/// EDID files of every outcome, and two names to save under.
std::vector<std::string> put_edid_files(const test::temporary_directory& directory) {
    const std::string header("\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00", 8);
    const std::string block = header + std::string(119, '\x11') + '\x01';
    directory.put("good.bin", block + block);
    directory.put("display.bin", string_of(first_sink_edid(1)));
    directory.put("good.hex", "00 FF FF FF FF FF FF 00 //7\n0x12,0x34\n");
    directory.put("wrong.hex", "00 x");
    directory.put("long.bin", std::string(300, 'A'));
    directory.put("empty.bin", "");
    directory.put("one.ddc", std::string(200, 'j') + block);
    directory.put("short.ddc", block);
    directory.put("sum.bin", std::string(256, '\0'));
    directory.put("other.txt", "00");
    return {"display.bin", "display.bin", "display.bin", "good.bin", "good.bin",  "good.hex", "wrong.hex", "long.bin",
            "empty.bin",   "one.ddc",     "short.ddc",   "sum.bin",  "other.txt", "none.bin", "saved.hex", "saved.bin"};
}

outcome let_monkey_act(std::uint64_t seed) {
    const test::temporary_directory directory;
    directory.put("marlo_rs232.ini", test::usual_settings);
    directory.put("timing_pattern.ini", test::plain_catalogue(45, 45));
    const std::vector<std::string> files = put_edid_files(directory);
    const std::filesystem::path named_plainly = path_from_utf8(directory.plain_name());
    test::robot_at_hand desk(named_plainly);
    test::monkey at_the_desk(desk, named_plainly, files, seed);
    at_the_desk.act(actions);
    return {at_the_desk.transcript(), at_the_desk.outcomes(), at_the_desk.nonsense()};
}

/// A repair without its line; a sum that fits no byte; too many bytes; a file number that stays open; a capture that is
/// too short: where no handler is armed. Nodes that the tree refuses.
const std::set<std::string> told_on_the_edid_side = {"fatal 5",  "fatal 6",     "fatal 9",    "fatal 55",
                                                     "fatal 63", "fatal 35600", "fatal 35602"};

class monkey_test : public testing::TestWithParam<std::uint64_t> {};

TEST_P(monkey_test, survives_or_reports_a_failure_the_same_way_for_the_same_seed) {
    const outcome first = let_monkey_act(GetParam());
    EXPECT_TRUE(first.nonsense.empty()) << first.nonsense.front();
    EXPECT_GT(first.counts.at("ok"), actions / 2) << "it got little done";
    for (const auto& [kind, count] : first.counts) {
        // a missing row and a value out of range are reported
        const bool reported = kind == "ok" || kind == "refused" || kind == "fatal 35600" || kind == "fatal 380" ||
                              told_on_the_edid_side.contains(kind);
        EXPECT_TRUE(reported) << count << " x " << kind;
    }
    EXPECT_TRUE(let_monkey_act(GetParam()).transcript == first.transcript) << "the second time it went another way";
}

INSTANTIATE_TEST_SUITE_P(seeds, monkey_test, testing::Values(1U, 2U, 3U));

TEST(monkey, does_other_things_with_another_seed) {
    EXPECT_TRUE(let_monkey_act(1).transcript != let_monkey_act(4).transcript);
}

} // namespace
} // namespace desk::robot
