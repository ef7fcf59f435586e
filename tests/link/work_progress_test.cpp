#include "link/work_progress.h"

#include <gtest/gtest.h>

#include <memory>

namespace desk {
namespace {

TEST(work_progress, is_idle_without_work) {
    const work_progress progress;
    EXPECT_FALSE(progress.at_work());
    EXPECT_FALSE(progress.has_no_measure());
    EXPECT_EQ(progress.fraction(), 0);
}

TEST(work_progress, is_the_exact_fraction_done) {
    work_progress progress;
    {
        work rows(progress, 60);
        EXPECT_TRUE(progress.at_work());
        EXPECT_EQ(progress.fraction(), 0);
        for (int i = 0; i < 15; ++i)
            rows.step();
        EXPECT_EQ(progress.fraction(), 0.25);
        for (int i = 15; i < 60; ++i)
            rows.step();
        EXPECT_EQ(progress.fraction(), 1);
    }
    EXPECT_FALSE(progress.at_work());
}

TEST(work_progress, follows_what_another_variable_counts) {
    work_progress progress;
    std::int16_t received = 0;
    const work bytes(progress, 768, received);
    received = 192;
    EXPECT_EQ(progress.fraction(), 0.25);
    received = 1000;
    EXPECT_EQ(progress.fraction(), 1) << "more came than was asked for";
}

TEST(work_progress, divides_a_step_by_the_work_inside_it) {
    work_progress progress;
    work outer(progress, 4);
    outer.step();
    {
        work inner(progress, 2);
        EXPECT_EQ(progress.fraction(), 0.25);
        inner.step();
        EXPECT_EQ(progress.fraction(), 0.375);
        inner.step();
        EXPECT_EQ(progress.fraction(), 0.5);
    }
    outer.step();
    EXPECT_EQ(progress.fraction(), 0.5);
}

TEST(work_progress, is_complete_with_the_last_step) {
    work_progress progress;
    work outer(progress, 1);
    outer.step();
    work inner(progress, 2);
    inner.step();
    EXPECT_EQ(progress.fraction(), 1);
}

TEST(work_progress, says_if_it_is_indeterminate) {
    work_progress progress;
    work outer(progress, 2);
    outer.step();
    EXPECT_FALSE(progress.has_no_measure());
    {
        const work erasing(progress);
        EXPECT_TRUE(progress.at_work());
        EXPECT_TRUE(progress.has_no_measure());
        EXPECT_EQ(progress.fraction(), 0.5);
    }
    EXPECT_FALSE(progress.has_no_measure());
}

TEST(work_progress, allows_ends_in_any_order) {
    work_progress progress;
    auto outer = std::make_unique<work>(progress, 2);
    work inner(progress, 2);
    inner.step();
    outer.reset();
    EXPECT_EQ(progress.fraction(), 0.5);
}

TEST(work_progress, of_no_steps_at_all_divides_by_nothing) {
    work_progress progress;
    work rows(progress, 0);
    rows.step();
    EXPECT_EQ(progress.fraction(), 0);
}

} // namespace
} // namespace desk
