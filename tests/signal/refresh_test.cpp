#include "signal/refresh.h"

#include "support/expect_failure.h"
#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::failure_of;
using test::lit;
using test::look_of;
using test::strings;

class refresh_test : public test::signal_fixture {
protected:
    refresh_test() {
        answers = {{"TIM999", "TIM007"}, {"PAT999", "PAT005"}, {"OUT999", "OUT003"}, {"HDC999", "HDC001"}};
        rows.lstv_timing.select(2);
        rows.lstv_pattern.select(3);
        set_labels("as before");
    }
    void press_in(int view) {
        enter(view);
        status.cmd_refresh.on_click();
    }
};

TEST_F(refresh_test, shows_what_the_generator_outputs) {
    press_in(4);
    EXPECT_EQ(m.port.take_written(), (strings{"TIM999", "PAT999", "OUT999", "HDC999"}));
    EXPECT_EQ(labels(), (strings{"[07] timing", "[05] pattern", "DVI", "ON"}));
    EXPECT_EQ(rows.cur_timing, 7);
    EXPECT_EQ(rows.cur_pattern, 5);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(refresh_test, is_disabled_then_red_then_empty) {
    film([this] { return look_of(status.cmd_refresh) + " " + labels()[0] + "|" + labels()[3]; });
    press_in(6);
    EXPECT_EQ(frames, (strings{"grey disabled as before|as before", "red disabled |", "TIM999: red disabled |",
                               "red disabled |", "PAT999: red disabled [07] timing|", "red disabled [07] timing|",
                               "OUT999: red disabled [07] timing|", "red disabled [07] timing|",
                               "HDC999: red disabled [07] timing|", "red disabled [07] timing|"}));
    EXPECT_EQ(look_of(status.cmd_refresh), "grey enabled");
}

TEST_F(refresh_test, shows_each_value_before_it_asks_for_the_next) {
    film([this] {
        const strings l = labels();
        return l[0] + "|" + l[1] + "|" + l[2] + "|" + l[3];
    });
    press_in(4);
    EXPECT_EQ(frames,
              (strings{"as before|as before|as before|as before", "|||", "TIM999: |||", "|||", "PAT999: [07] timing|||",
                       "[07] timing|||", "OUT999: [07] timing|[05] pattern||", "[07] timing|[05] pattern||",
                       "HDC999: [07] timing|[05] pattern|DVI|", "[07] timing|[05] pattern|DVI|"}));
}

TEST_F(refresh_test, reads_the_last_three_characters) {
    answers["TIM999"] = "TIM0012";
    answers["PAT999"] = "PAT00045";
    press_in(4);
    EXPECT_EQ(rows.cur_timing, 12);
    EXPECT_EQ(rows.cur_pattern, 45);
    EXPECT_EQ(labels(), (strings{"[12] timing", "[45] pattern", "DVI", "ON"}));
}

TEST_F(refresh_test, selects_the_timing_only_in_timing_select) {
    for (const int view : {1, 2, 3, 4, 5, 6, 254}) {
        press_in(view);
        EXPECT_EQ(rows.lstv_timing.selected(), 2) << view;
        EXPECT_FALSE(rows.lstv_timing.has_focus()) << view;
    }
    press_in(0);
    EXPECT_EQ(rows.lstv_timing.selected(), 7);
    EXPECT_TRUE(rows.lstv_timing.has_focus());
}

TEST_F(refresh_test, leaves_the_figures_of_the_timing_selected_before) {
    enter(0);
    rows.show_timing_detail();
    press_in(0);
    EXPECT_EQ(rows.lstv_timing.selected(), 7);
    EXPECT_EQ(desk_area.txt_htotal_pix.text.get(), "802");
    EXPECT_EQ(desk_area.fra_desk.caption, "[02] timing");
}

TEST_F(refresh_test, selects_the_pattern_only_in_pattern_select) {
    for (const int view : {0, 2, 3, 4, 5, 6, 254}) {
        press_in(view);
        EXPECT_EQ(rows.lstv_pattern.selected(), 3) << view;
        EXPECT_FALSE(rows.lstv_pattern.has_focus()) << view;
    }
    press_in(1);
    EXPECT_EQ(rows.lstv_pattern.selected(), 5);
    EXPECT_TRUE(rows.lstv_pattern.has_focus());
}

TEST_F(refresh_test, shows_the_extras_of_the_pattern_in_pattern_select) {
    rows.show_pattern_extras();
    desk_area.fra_desk.caption = "[03] pattern";
    answers["PAT999"] = "PAT041";
    press_in(1);
    EXPECT_TRUE(desk_area.txt_motion_str.visible);
    EXPECT_FALSE(desk_area.txt_color_setting[0].visible);
    EXPECT_EQ(desk_area.fra_desk.caption, "[03] pattern");
    answers["PAT999"] = "PAT013";
    press_in(1);
    EXPECT_FALSE(desk_area.txt_motion_str.visible);
    EXPECT_TRUE(desk_area.txt_color_setting[0].visible);
    EXPECT_EQ(desk_area.lab_color_setting[0].caption, "?");
}

TEST_F(refresh_test, leaves_the_extras_in_any_other_view) {
    rows.show_pattern_extras();
    answers["PAT999"] = "PAT041";
    for (const int view : {0, 2, 3, 4, 5, 6}) {
        press_in(view);
        EXPECT_FALSE(desk_area.txt_motion_str.visible) << view;
    }
}

TEST_F(refresh_test, names_and_lights_the_four_output_formats_and_no_other) {
    const strings names{"PC", "HD", "DVI", "HDMI"};
    const std::vector<std::pair<std::string, int>> cases = {
        {"OUT001", 0},  {"OUT002", 1},  {"OUT003", 2},  {"OUT004", 3},  {"OUT000", -1},
        {"OUT005", -1}, {"OUT014", -1}, {"OUT254", -1}, {"OUT999", -1}, {"OUT0002", 1}};
    for (const auto& [answer, index] : cases) {
        switches.paint_out(1);
        answers["OUT999"] = answer;
        press_in(6);
        EXPECT_EQ(status.lab_out.caption, index < 0 ? "" : names.at(static_cast<std::size_t>(index))) << answer;
        EXPECT_EQ(lit(switches.cmd_out), index) << answer;
        EXPECT_EQ(status.lab_hdcp.caption, "ON") << "it continues";
    }
}

TEST_F(refresh_test, reads_hdcp_from_the_last_character) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"HDC000", "OFF"}, {"HDC001", "ON"},   {"HDC002", "ON"},  {"HDC010", "OFF"},
        {"HDC254", "ON"},  {"HDC0010", "OFF"}, {"HDC000x", "ON"}, {"HDC100", "OFF"}};
    for (const auto& [answer, name] : cases) {
        answers["HDC999"] = answer;
        press_in(6);
        EXPECT_EQ(status.lab_hdcp.caption, name) << answer;
        EXPECT_EQ(lit(switches.cmd_hdcp), name == "ON" ? 1 : 0) << answer;
    }
}

TEST_F(refresh_test, paints_nothing_in_any_other_view) {
    for (const bool fails : {false, true}) {
        if (fails) answers["HDC999"] = "";
        for (const int view : {0, 1, 2, 3, 4, 5, 254}) {
            switches.paint_out(1);
            switches.paint_hdcp(0);
            press_in(view);
            EXPECT_EQ(lit(switches.cmd_out), 0) << view;
            EXPECT_EQ(lit(switches.cmd_hdcp), 0) << view;
        }
    }
}

TEST_F(refresh_test, compares_the_letters) {
    answers["PAT999"] = "TIM005";
    press_in(4);
    EXPECT_EQ(labels(), (strings{"[07] timing", "Link Error", "", ""}));
}

TEST_F(refresh_test, ends_the_program_for_a_row_that_the_list_does_not_have) {
    for (const char* answer : {"TIM254", "TIM000", "TIM031"}) {
        answers["TIM999"] = answer;
        EXPECT_EQ(failure_of([&] { press_in(4); }), failure::index_out_of_bounds) << answer;
        EXPECT_EQ(m.port.take_written(), strings{"TIM999"}) << answer;
    }
    rows.cur_timing = 11;
    answers["TIM999"] = "TIM254";
    EXPECT_TRUE(failure_of([&] { press_in(4); }));
    EXPECT_EQ(rows.cur_timing, 254);
    answers["TIM999"] = "TIM030";
    answers["PAT999"] = "PAT046";
    EXPECT_EQ(failure_of([&] { press_in(4); }), failure::index_out_of_bounds);
    EXPECT_EQ(rows.cur_pattern, 46);
}

class failed_refresh : public refresh_test {
protected:
    failed_refresh() {
        rows.cur_timing = 11;
        rows.cur_pattern = 12;
        switches.paint_out(1);
        switches.paint_hdcp(0);
    }
    /// In each view: the unanswered query, the labels after it and the known rows.
    void expect_end_at(const std::string& query, const strings& sent, const strings& report, int timing, int pattern) {
        answers[query] = "";
        for (const int view : {0, 1, 4, 6}) {
            press_in(view);
            EXPECT_EQ(m.port.take_written(), sent) << view;
            EXPECT_EQ(labels(), report) << view;
            EXPECT_EQ(rows.cur_timing, timing) << view;
            EXPECT_EQ(rows.cur_pattern, pattern) << view;
            EXPECT_EQ(look_of(status.cmd_refresh), "grey enabled") << view;
        }
        EXPECT_TRUE(m.boxes.all.empty());
    }
};

TEST_F(failed_refresh, ends_at_the_timing) {
    expect_end_at("TIM999", {"TIM999", "TIM999"}, {"Link Error", "", "", ""}, 254, 12);
    EXPECT_EQ(rows.lstv_timing.selected(), 2);
    EXPECT_EQ(lit(switches.cmd_out), 0);
    EXPECT_EQ(lit(switches.cmd_hdcp), 0);
}

TEST_F(failed_refresh, ends_at_the_pattern) {
    expect_end_at("PAT999", {"TIM999", "PAT999", "PAT999"}, {"[07] timing", "Link Error", "", ""}, 7, 254);
    EXPECT_EQ(rows.lstv_pattern.selected(), 3);
    EXPECT_EQ(lit(switches.cmd_out), 0);
    EXPECT_EQ(lit(switches.cmd_hdcp), 0);
}

TEST_F(failed_refresh, ends_at_the_output_format_and_leaves_its_group) {
    expect_end_at("OUT999", {"TIM999", "PAT999", "OUT999", "OUT999"}, {"[07] timing", "[05] pattern", "Link Error", ""},
                  7, 5);
    EXPECT_EQ(lit(switches.cmd_out), 0);
    EXPECT_EQ(lit(switches.cmd_hdcp), 0);
}

TEST_F(failed_refresh, ends_at_hdcp_and_darkens_its_group) {
    expect_end_at("HDC999", {"TIM999", "PAT999", "OUT999", "HDC999", "HDC999"},
                  {"[07] timing", "[05] pattern", "DVI", "Link Error"}, 7, 5);
    EXPECT_EQ(lit(switches.cmd_out), 2);
    EXPECT_EQ(lit(switches.cmd_hdcp), -1);
}

TEST_F(failed_refresh, shows_the_box_of_a_closed_port_once) {
    link.cmd_disconn_click();
    press_in(6);
    EXPECT_EQ(m.boxes.all, std::vector{test::box_disconnected});
    EXPECT_EQ(labels(), (strings{"Link Error", "", "", ""}));
}

} // namespace
} // namespace desk
