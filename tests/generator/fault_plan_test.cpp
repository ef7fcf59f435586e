#include "generator/fault_plan.h"

#include "runtime/failure.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace desk {
namespace {

using words = std::vector<std::string_view>;

std::vector<fault> kinds_of(fault_plan plan, int answers) {
    std::vector<fault> kinds;
    for (int i = 0; i < answers; ++i)
        kinds.push_back(plan.next().what);
    return kinds;
}

std::map<fault, int> counts_of(fault_plan plan, int answers) {
    std::map<fault, int> counts;
    for (const fault f : kinds_of(std::move(plan), answers))
        ++counts[f];
    return counts;
}

TEST(fault_plan, changes_nothing_by_default) {
    EXPECT_TRUE(fault_plan().idle());
    EXPECT_EQ(counts_of({}, 100).at(fault::none), 100);
    EXPECT_EQ(counts_of({0, 7, {}}, 100).at(fault::none), 100);
}

TEST(fault_plan, decides_the_same_for_the_same_seed) {
    EXPECT_EQ(kinds_of({20, 7, {}}, 1000), kinds_of({20, 7, {}}, 1000));
    EXPECT_NE(kinds_of({20, 7, {}}, 1000), kinds_of({20, 8, {}}, 1000));
    fault_plan one(50, 7, {});
    fault_plan other(50, 7, {});
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(one.next().size, other.next().size);
}

TEST(fault_plan, keeps_to_its_rate) {
    EXPECT_EQ(counts_of({100, 1, {fault::drop}}, 1000).at(fault::drop), 1000);
    // 20 % of 10000 are 2000 with a standard deviation of 40
    const int dropped = counts_of({20, 1, {fault::drop}}, 10000).at(fault::drop);
    EXPECT_GT(dropped, 1800);
    EXPECT_LT(dropped, 2200);
}

TEST(fault_plan, has_all_faults_of_a_lower_rate_at_a_higher_rate) {
    const std::vector<fault> some = kinds_of({10, 3, {}}, 1000);
    const std::vector<fault> more = kinds_of({30, 3, {}}, 1000);
    for (std::size_t i = 0; i < some.size(); ++i) {
        if (some[i] == fault::none) continue;
        EXPECT_EQ(more[i], some[i]);
    }
}

TEST(fault_plan, takes_the_kinds_it_is_given) {
    const auto two = counts_of({100, 1, {fault::late, fault::forget}}, 1000);
    EXPECT_EQ(two.size(), 2U);
    EXPECT_EQ(counts_of({100, 1, {}}, 1000).size(), all_faults.size()) << "none named: all";
}

TEST(fault_plan, weights_a_kind_by_how_often_it_is_named) {
    // three of four: 7500 with a standard deviation of 43
    const auto counts = counts_of({100, 1, {fault::drop, fault::drop, fault::drop, fault::late}}, 10000);
    EXPECT_GT(counts.at(fault::drop), 7300);
    EXPECT_LT(counts.at(fault::drop), 7700);
}

TEST(fault_plan, names_each_kind_differently) {
    std::set<std::string_view> names;
    for (const fault f : all_faults)
        names.insert(fault_name(f));
    EXPECT_EQ(names, (std::set<std::string_view>{"drop", "repeat", "garble", "delay", "short", "long", "late", "silent",
                                                 "unplug", "forget", "miswrite"}));
}

TEST(fault_plan, is_read_from_words) {
    EXPECT_EQ(fault_plan_of({"20", "seed", "7", "drop", "short"}).text(),
              "20 % of answers are faulty, seed 7: drop short");
    EXPECT_EQ(fault_plan_of({"100", "late"}).text(), "100 % of answers are faulty, seed 1: late");
    EXPECT_EQ(fault_plan_of({"5", "seed", "18446744073709551615"}).text(),
              "5 % of answers are faulty, seed 18446744073709551615: drop repeat garble delay short long late silent "
              "unplug forget miswrite");
    EXPECT_EQ(fault_plan_of({"off"}).text(), "No faults by chance.");
    EXPECT_EQ(fault_plan_of({"0"}).text(), "No faults by chance.");
}

TEST(fault_plan, refuses_malformed_plans) {
    for (const words& line : {words{}, words{"x"}, words{"101"}, words{"-1"}, words{"5", "seed"},
                              words{"5", "seed", "x"}, words{"5", "seed", "-1"}, words{"5", "7"}, words{"5", "none"},
                              words{"5", "drop", "seed", "7"}, words{"off", "drop"}, words{"5", ""}})
        EXPECT_THROW(fault_plan_of(line), runtime_failure) << line.size();
    EXPECT_THROW(fault_plan(101, 1, {}), runtime_failure);
    EXPECT_THROW(fault_plan(-1, 1, {}), runtime_failure);
}

} // namespace
} // namespace desk
