#include "signal/set_dispatcher.h"

#include "controls/window.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using strings = std::vector<std::string>;

class set_test : public testing::Test {
protected:
    set_test() {
        rows.change_view = [this](int view) { link.view_mode = static_cast<std::int16_t>(view); };
        m.events.ticking = &link.tim_rx;
        for (control* c : std::vector<control*>{&rows.lstv_timing, &rows.lstv_pattern, &desk_area.cmd_run})
            form.add(*c);
        std::string text = "30\r\n";
        for (int i = 1; i <= 30; ++i)
            text += "\"timing " + std::to_string(i) + "\",800,640,16,96,\"-\",525,480,10,2,\"+\",25.175\r\n";
        text += "45\r\n";
        for (int i = 1; i <= 45; ++i)
            text += "\"pattern " + std::to_string(i) + "\"\r\n";
        rows.load(text);
        link.com_port = 1;
        link.set_comm();
    }
    /// Presses SET in a view with a row of its list selected.
    void set(int view, int row) {
        link.view_mode = static_cast<std::int16_t>(view);
        (view == 0 ? rows.lstv_timing : rows.lstv_pattern).select(row);
        desk_area.cmd_run.on_click();
    }

    test::fake_machine m;
    exchange link{m.host};
    desk_frame desk_area;
    status_frame status;
    catalogue rows{link, desk_area, status};
    autorun steps{link, desk_area, rows};
    set_dispatcher dispatcher{link, desk_area, status, rows, steps};
    window form;
};

TEST_F(set_test, sends_the_timing_and_shows_its_name) {
    m.echo_all();
    set(0, 7);
    EXPECT_EQ(m.port.take_written(), strings{"TIM007"});
    EXPECT_EQ(status.lab_timing.caption, "timing 7");
    EXPECT_EQ(rows.cur_timing, 7);
    EXPECT_EQ(rows.cur_pattern, 254);
    EXPECT_TRUE(rows.lstv_timing.has_focus());
}

TEST_F(set_test, sends_the_pattern_and_shows_its_name) {
    m.echo_all();
    set(1, 41);
    EXPECT_EQ(m.port.take_written(), strings{"PAT041"});
    EXPECT_EQ(status.lab_pattern.caption, "pattern 41");
    EXPECT_EQ(rows.cur_pattern, 41);
    EXPECT_EQ(rows.cur_timing, 254);
    EXPECT_TRUE(rows.lstv_pattern.has_focus());
}

TEST_F(set_test, demands_the_whole_echo) {
    for (const char* answer : {"TIM008", "TIM0077", "TIM007 ", "TIM254"}) {
        rows.cur_timing = 3;
        m.answer_all(answer);
        set(0, 7);
        EXPECT_EQ(status.lab_timing.caption, "Link Error") << answer;
        EXPECT_EQ(rows.cur_timing, 3) << answer;
    }
    m.answer_all("PAT008");
    rows.cur_pattern = 5;
    set(1, 7);
    EXPECT_EQ(status.lab_pattern.caption, "Link Error");
    EXPECT_EQ(rows.cur_pattern, 5);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(set_test, tells_of_a_dead_link_in_its_label_alone) {
    rows.cur_timing = 3;
    set(0, 7);
    EXPECT_EQ(m.port.take_written(), (strings{"TIM007", "TIM007"}));
    EXPECT_EQ(status.lab_timing.caption, "Link Error");
    EXPECT_EQ(rows.cur_timing, 3);
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_TRUE(rows.lstv_timing.has_focus());
    set(1, 7);
    EXPECT_EQ(status.lab_pattern.caption, "Link Error");
    EXPECT_EQ(rows.cur_pattern, 254);
}

TEST_F(set_test, tells_of_a_closed_port_in_a_box_and_in_its_label) {
    link.cmd_disconn_click();
    set(0, 7);
    EXPECT_EQ(m.boxes.all, std::vector{test::box_disconnected});
    EXPECT_EQ(status.lab_timing.caption, "Link Error");
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(set_test, is_red_and_dead_while_the_link_is_busy) {
    bool enabled = true;
    color back_color = 0;
    std::string label = "?";
    status.lab_timing.caption = "timing 1";
    m.events.in(100, [&] {
        enabled = desk_area.cmd_run.enabled;
        back_color = desk_area.cmd_run.back_color;
        label = status.lab_timing.caption;
    });
    set(0, 7);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(back_color, 255U);
    EXPECT_EQ(label, "") << "emptied before the exchange";
    EXPECT_TRUE(desk_area.cmd_run.enabled);
    EXPECT_EQ(desk_area.cmd_run.back_color, 0x8000000FU);
}

TEST_F(set_test, is_dead_before_it_is_red) {
    std::vector<bool> enabled;
    std::vector<color> colors;
    m.events.on_pump = [&] {
        enabled.push_back(desk_area.cmd_run.enabled);
        colors.push_back(desk_area.cmd_run.back_color);
    };
    set(4, 1);
    EXPECT_EQ(enabled, std::vector<bool>{false});
    EXPECT_EQ(colors, std::vector<color>{0x8000000F});
}

TEST_F(set_test, sends_nothing_in_the_views_without_it) {
    for (const int view : {4, 6, 254}) {
        set(view, 1);
        EXPECT_TRUE(m.port.take_written().empty()) << view;
        EXPECT_TRUE(desk_area.cmd_run.enabled) << view;
        EXPECT_EQ(desk_area.cmd_run.back_color, 0x8000000FU) << view;
    }
}

} // namespace
} // namespace desk
