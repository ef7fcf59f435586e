// A monkey at the desk: random clicks at random moments of random exchanges.

#include "robot/robot.h"
#include "support/desk_fixture.h"
#include "support/monkey.h"

#include <gtest/gtest.h>

#include <string>

namespace desk::robot {
namespace {

constexpr int actions = 2000;

struct outcome {
    std::string transcript;
    std::map<std::string, int> counts;
    std::vector<std::string> nonsense;
};

outcome let_monkey_act(std::uint64_t seed) {
    const test::temporary_directory directory;
    directory.put("marlo_rs232.ini", test::usual_settings);
    directory.put("timing_pattern.ini", test::plain_catalogue(45, 45));
    robot desk(directory.path());
    test::monkey at_the_desk(desk, seed);
    at_the_desk.act(actions);
    return {at_the_desk.transcript(), at_the_desk.outcomes(), at_the_desk.nonsense()};
}

class monkey_test : public testing::TestWithParam<std::uint64_t> {};

TEST_P(monkey_test, ends_alive_or_in_a_told_failure_and_the_same_way_for_the_same_seed) {
    const outcome first = let_monkey_act(GetParam());
    EXPECT_TRUE(first.nonsense.empty()) << first.nonsense.front();
    EXPECT_GT(first.counts.at("ok"), actions / 2) << "it got little done";
    for (const auto& [kind, count] : first.counts) {
        // a row that a list doesn't have, a value that a slider doesn't take: as told
        const bool told = kind == "ok" || kind == "refused" || kind == "fatal 35600" || kind == "fatal 380";
        EXPECT_TRUE(told) << count << " x " << kind;
    }
    EXPECT_EQ(let_monkey_act(GetParam()).transcript, first.transcript);
}

INSTANTIATE_TEST_SUITE_P(seeds, monkey_test, testing::Values(1U, 2U, 3U));

TEST(monkey, does_other_things_with_another_seed) {
    EXPECT_NE(let_monkey_act(1).transcript, let_monkey_act(4).transcript);
}

} // namespace
} // namespace desk::robot
