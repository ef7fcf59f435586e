// How large a plan is drawn in the available room.

#include "qt/appearance.h"
#include "qt/plan_fit.h"

#include <gtest/gtest.h>

namespace desk::qt {

namespace {

constexpr QSize desk_plan(11700, 9090);
constexpr QMargins frame(2, 30, 2, 2);

struct screen {
    QSize available;
    double device_pixel_ratio;
};

void expect_first_scale(const screen& on, double expected) {
    const double scale = first_scale(desk_plan, on.available, frame, on.device_pixel_ratio);
    EXPECT_EQ(scale, expected) << on.available.width();
    const QSize whole = plan_pixels(desk_plan, scale).grownBy(frame);
    EXPECT_LE(whole.width(), on.available.width());
    EXPECT_LE(whole.height(), on.available.height());
    EXPECT_GE(text_pixels(text_font::sans, scale) * on.device_pixel_ratio, 9);
}

// 780 x 606 pixels at 1:1

TEST(plan_fit, opens_as_large_as_the_screen_allows_but_no_larger_than_1_to_1) {
    expect_first_scale({{1024, 600}, 1}, 15 / 16.0);
    expect_first_scale({{1366, 768}, 1}, 1);
    expect_first_scale({{911, 512}, 1.5}, 12 / 16.0);
    expect_first_scale({{960, 540}, 2}, 13 / 16.0);
    expect_first_scale({{768, 432}, 2.5}, 10 / 16.0);
    expect_first_scale({{1920, 1080}, 1}, 1);
    expect_first_scale({{3840, 2160}, 1}, 1);
    expect_first_scale({{780 + 4, 606 + 32}, 1}, 1);
    expect_first_scale({{780 + 3, 606 + 32}, 1}, 15 / 16.0);
    expect_first_scale({{780 + 4, 606 + 31}, 1}, 15 / 16.0);
}

TEST(plan_fit, opens_a_window_above_another_no_larger_than_that) {
    EXPECT_EQ(first_scale({5520, 5340}, {1920, 1080}, frame, 1, 13 / 16.0), 13 / 16.0);
    EXPECT_EQ(first_scale({5520, 5340}, {1920, 1080}, frame, 1, 3), 47 / 16.0);
}

TEST(plan_fit, fills_the_room_in_steps_of_a_sixteenth) {
    EXPECT_EQ(fitting_scale(desk_plan, {3840, 2160}, 1), 57 / 16.0);
    EXPECT_EQ(fitting_scale(desk_plan, {1560, 1212}, 1), 2);
    EXPECT_EQ(fitting_scale(desk_plan, {1559, 1212}, 1), 31 / 16.0);
    EXPECT_EQ(fitting_scale(desk_plan, {1560, 1211}, 1), 31 / 16.0);
}

TEST(plan_fit, draws_nothing_illegibly_small) {
    EXPECT_EQ(smallest_scale(1), 12 / 16.0);
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 2.5, 4.0}) {
        const double smallest = smallest_scale(ratio);
        EXPECT_GE(text_pixels(text_font::sans, smallest) * ratio, 9);
        EXPECT_LT(text_pixels(text_font::sans, smallest - 1 / 16.0) * ratio, 9);
        EXPECT_EQ(fitting_scale(desk_plan, {200, 100}, ratio), smallest);
        EXPECT_EQ(fitting_scale(desk_plan, {3000, 100}, ratio), smallest);
        EXPECT_EQ(fitting_scale(desk_plan, {0, 0}, ratio), smallest);
    }
}

TEST(plan_fit, moves_a_window_into_sight) {
    const QRect available(0, 27, 1024, 573);
    EXPECT_EQ(moved_into(available, {100, 50, 500, 400}), QRect(100, 50, 500, 400));
    EXPECT_EQ(moved_into(available, {700, 400, 500, 400}), QRect(524, 200, 500, 400));
    EXPECT_EQ(moved_into(available, {-20, -10, 500, 400}), QRect(0, 27, 500, 400));
    EXPECT_EQ(moved_into(available, {300, 300, 2000, 2000}), QRect(0, 27, 2000, 2000));
}

} // namespace

} // namespace desk::qt
