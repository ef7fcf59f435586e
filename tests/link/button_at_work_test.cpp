#include "link/button_at_work.h"

#include "controls/window.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <vector>

namespace desk {
namespace {

class button_at_work : public testing::Test {
protected:
    test::scripted_events events;
    button pressed;
};

TEST_F(button_at_work, is_disabled_and_red) {
    begin_work(pressed, events);
    EXPECT_FALSE(pressed.enabled);
    EXPECT_EQ(pressed.back_color, 255U);
}

TEST_F(button_at_work, is_disabled_but_not_yet_red_in_the_first_pump) {
    std::vector<bool> enabled;
    std::vector<color> colors;
    events.on_pump = [&] {
        enabled.push_back(pressed.enabled);
        colors.push_back(pressed.back_color);
    };
    begin_work(pressed, events);
    EXPECT_EQ(enabled, std::vector{false});
    EXPECT_EQ(colors, std::vector<color>{0x8000000F});
}

TEST_F(button_at_work, is_enabled_at_its_end_without_a_pump) {
    begin_work(pressed, events);
    events.pumps = 0;
    end_work(pressed);
    EXPECT_TRUE(pressed.enabled);
    EXPECT_EQ(pressed.back_color, 0x8000000FU);
    EXPECT_EQ(events.pumps, 0);
}

TEST_F(button_at_work, is_reset_from_any_state) {
    pressed.back_color = color_green;
    begin_work(pressed, events);
    end_work(pressed);
    EXPECT_EQ(pressed.back_color, 0x8000000FU);
}

TEST_F(button_at_work, is_reported_to_its_adapter) {
    window form;
    form.add(pressed);
    form.take_changed();
    begin_work(pressed, events);
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&pressed});
    end_work(pressed);
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&pressed});
}

} // namespace
} // namespace desk
