#include "signal/set_dispatcher.h"

#include "support/expect_failure.h"
#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::boxes;
using test::checked_rows;
using test::failure_of;
using test::look_of;
using test::strings;

class set_test : public test::signal_fixture {
protected:
    using signal_fixture::signal_fixture;
    /// Presses SET in a view with a row of its list selected.
    void set(int view, int row) {
        enter(view);
        (view == 0 ? rows.lstv_timing : rows.lstv_pattern).select(row);
        desk_area.cmd_run.on_click();
    }
    /// The look of SET and whether Download is disabled.
    std::string look() const {
        return look_of(desk_area.cmd_run) + (desk_area.cmd_download.enabled ? "" : ", no download");
    }
};

TEST_F(set_test, sends_the_timing_and_shows_its_name) {
    set(0, 7);
    EXPECT_EQ(m.port.take_written(), strings{"TIM007"});
    EXPECT_EQ(status.lab_timing.caption, "[07] timing");
    EXPECT_EQ(rows.cur_timing, 7);
    EXPECT_EQ(rows.cur_pattern, 254);
    EXPECT_TRUE(rows.lstv_timing.has_focus());
}

TEST_F(set_test, sends_the_pattern_and_shows_its_name) {
    set(1, 41);
    EXPECT_EQ(m.port.take_written(), strings{"PAT041"});
    EXPECT_EQ(status.lab_pattern.caption, "[41] pattern");
    EXPECT_EQ(rows.cur_pattern, 41);
    EXPECT_EQ(rows.cur_timing, 254);
    EXPECT_TRUE(rows.lstv_pattern.has_focus());
}

TEST_F(set_test, demands_the_whole_echo) {
    for (const char* answer : {"TIM008", "TIM0077", "TIM007 ", "TIM254"}) {
        rows.cur_timing = 3;
        answers["TIM007"] = answer;
        set(0, 7);
        EXPECT_EQ(status.lab_timing.caption, "Link Error") << answer;
        EXPECT_EQ(rows.cur_timing, 3) << answer;
    }
    answers["PAT007"] = "PAT008";
    rows.cur_pattern = 5;
    set(1, 7);
    EXPECT_EQ(status.lab_pattern.caption, "Link Error");
    EXPECT_EQ(rows.cur_pattern, 5);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(set_test, reports_a_failed_link_only_in_its_label) {
    unplugged = true;
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

TEST_F(set_test, reports_a_closed_port_in_a_box_and_in_its_label) {
    link.cmd_disconn_click();
    set(0, 7);
    EXPECT_EQ(m.boxes.all, std::vector{test::box_disconnected});
    EXPECT_EQ(status.lab_timing.caption, "Link Error");
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(set_test, sends_nothing_in_the_views_without_it) {
    for (const int view : {4, 6, 254}) {
        set(view, 1);
        EXPECT_TRUE(m.port.take_written().empty()) << view;
        EXPECT_TRUE(desk_area.cmd_run.enabled) << view;
        EXPECT_EQ(desk_area.cmd_run.back_color, 0x8000000FU) << view;
    }
}

TEST_F(set_test, takes_the_row_that_is_selected_after_its_pumps) {
    for (const int view : {0, 1}) {
        list_view& list = view == 0 ? rows.lstv_timing : rows.lstv_pattern;
        set_labels("as before");
        m.events.on_pump = [&] {
            if (labels() != strings(4, "as before")) list.select(9);
        };
        set(view, 7);
        EXPECT_EQ(m.port.take_written(), strings{view == 0 ? "TIM009" : "PAT009"});
    }
}

TEST_F(set_test, gives_the_list_the_focus_at_its_end) {
    for (const int view : {0, 1}) {
        const list_view& list = view == 0 ? rows.lstv_timing : rows.lstv_pattern;
        frames.clear();
        film([&] { return list.has_focus() ? "focus" : "none"; });
        set(view, 7);
        EXPECT_EQ(frames.back(), "none");
        EXPECT_TRUE(list.has_focus());
    }
}

TEST_F(set_test, is_disabled_then_red_with_an_empty_label_and_leaves_download_enabled) {
    for (const int view : {0, 1}) {
        const label& name = view == 0 ? status.lab_timing : status.lab_pattern;
        set_labels("as before");
        film([&] { return look() + " [" + name.caption.get() + "]"; });
        frames.clear();
        set(view, 7);
        const std::string sent = view == 0 ? "TIM007" : "PAT007";
        EXPECT_EQ(frames, (strings{"grey disabled [as before]", "red disabled []", sent + ": red disabled []",
                                   "red disabled []"}));
        EXPECT_EQ(look(), "grey enabled");
    }
}

/// One of the two favorite walks.
struct favorite_walk_kind {
    const char* name;
    int view;
    std::int16_t exchange::*count;
    list_view catalogue::*list;
    const char* on;
    const char* off;
};

void PrintTo(const favorite_walk_kind& walk, std::ostream* out) { *out << walk.name; }

class favorite_walk : public set_test, public testing::WithParamInterface<favorite_walk_kind> {
protected:
    favorite_walk() {
        link.fav_timing_count = 7;
        link.fav_pattern_count = 7;
        link.*GetParam().count = 3;
    }
    list_view& list() { return rows.*GetParam().list; }
    void set() {
        enter(GetParam().view);
        desk_area.cmd_run.on_click();
    }
    static std::string on(int row) { return std::string(GetParam().on) + "00" + std::to_string(row); }
    static std::string off(int row) { return std::string(GetParam().off) + "00" + std::to_string(row); }
};

INSTANTIATE_TEST_SUITE_P(set, favorite_walk,
                         testing::Values(favorite_walk_kind{"timings", 2, &exchange::fav_timing_count,
                                                            &catalogue::lstv_timing, "FT+", "FT-"},
                                         favorite_walk_kind{"patterns", 3, &exchange::fav_pattern_count,
                                                            &catalogue::lstv_pattern, "FP+", "FP-"}),
                         [](const auto& walk) { return std::string(walk.param.name); });

TEST_P(favorite_walk, sends_the_flag_of_each_row_in_order) {
    for (const int checked : {1, 2, 3}) {
        test::set_checks(list(), {checked});
        set();
        strings expected;
        for (int i = 1; i <= 3; ++i)
            expected.push_back(i == checked ? on(i) : off(i));
        EXPECT_EQ(m.port.take_written(), expected);
        EXPECT_EQ(checked_rows(list()), std::vector{checked});
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_P(favorite_walk, sends_no_fallback_with_all_checked) {
    test::set_checks(list(), {1, 2, 3});
    set();
    EXPECT_EQ(m.port.take_written(), (strings{on(1), on(2), on(3)}));
}

TEST_P(favorite_walk, goes_through_the_whole_catalogue) {
    link.fav_timing_count = 30;
    link.fav_pattern_count = 45;
    test::set_checks(list(), {28});
    set();
    const strings sent = m.port.take_written();
    ASSERT_EQ(sent.size(), static_cast<std::size_t>(link.*GetParam().count));
    EXPECT_EQ(sent.at(27), std::string(GetParam().on) + "028");
    EXPECT_EQ(sent.back(), GetParam().off + std::string("0") + std::to_string(link.*GetParam().count));
}

TEST_P(favorite_walk, takes_each_check_when_its_turn_comes) {
    m.events.in(5, [this] { test::set_checks(list(), {3}); });
    set();
    EXPECT_EQ(m.port.take_written(), (strings{off(1), off(2), on(3)}));
}

TEST_P(favorite_walk, leaves_the_selection) {
    list().select(9);
    test::set_checks(list(), {2});
    set();
    EXPECT_EQ(list().selected(), 9);
    EXPECT_EQ(labels(), strings(4, ""));
}

TEST_P(favorite_walk, ignores_the_digits_of_an_answer) {
    test::set_checks(list(), {2});
    answers[off(1)] = std::string(GetParam().off) + "777";
    set();
    EXPECT_EQ(m.port.take_written(), (strings{off(1), on(2), off(3)}));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_P(favorite_walk, stops_with_one_box_and_no_fallback_at_its_first_failure) {
    unplugged = true;
    set();
    EXPECT_EQ(m.port.take_written(), (strings{off(1), off(1)}));
    EXPECT_EQ(m.boxes.all, boxes{test::box_link_error});
    EXPECT_TRUE(checked_rows(list()).empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_P(favorite_walk, stops_in_the_middle_too) {
    test::set_checks(list(), {3});
    answers[off(2)] = "";
    set();
    EXPECT_EQ(m.port.take_written(), (strings{off(1), off(2), off(2)}));
    EXPECT_EQ(m.boxes.all, boxes{test::box_link_error});
    EXPECT_EQ(checked_rows(list()), std::vector{3}) << "the checks stay as the operator set them";
}

TEST_P(favorite_walk, runs_no_fallback_if_the_last_row_fails) {
    answers[off(3)] = "";
    set();
    EXPECT_EQ(m.port.take_written(), (strings{off(1), off(2), off(3), off(3)}));
    EXPECT_EQ(m.boxes.all, boxes{test::box_link_error});
    EXPECT_TRUE(checked_rows(list()).empty());
}

TEST_P(favorite_walk, reports_a_closed_port_twice_and_stops) {
    link.cmd_disconn_click();
    set();
    EXPECT_EQ(m.boxes.all, (boxes{test::box_disconnected, test::box_link_error}));
    EXPECT_EQ(look(), "grey enabled");
}

TEST_P(favorite_walk, keeps_download_disabled_from_before_its_first_row) {
    test::set_checks(list(), {1});
    answers[off(2)] = "";
    film([this] { return look(); });
    set();
    const std::string busy = "red disabled, no download";
    EXPECT_EQ(frames, (strings{"grey disabled", on(1) + ": " + busy, busy, off(2) + ": " + busy, busy,
                               off(2) + ": " + busy, busy, "box: " + busy}));
    EXPECT_EQ(look(), "grey enabled");
}

class favorite_fallback : public set_test {
protected:
    favorite_fallback() {
        link.fav_timing_count = 2;
        link.fav_pattern_count = 2;
        rows.lstv_timing.select(9);
        rows.lstv_pattern.select(9);
    }
    void set_in(int view) {
        enter(view);
        desk_area.cmd_run.on_click();
    }
};

TEST_F(favorite_fallback, checks_the_timings_1_and_23) {
    set_in(2);
    EXPECT_EQ(m.port.take_written(), (strings{"FT-001", "FT-002", "FT+001", "FT+023"}));
    EXPECT_EQ(checked_rows(rows.lstv_timing), (std::vector{1, 23}));
    EXPECT_EQ(rows.lstv_timing.selected(), 23);
    EXPECT_TRUE(checked_rows(rows.lstv_pattern).empty());
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(favorite_fallback, checks_only_pattern_1) {
    set_in(3);
    EXPECT_EQ(m.port.take_written(), (strings{"FP-001", "FP-002", "FP+001"}));
    EXPECT_EQ(checked_rows(rows.lstv_pattern), std::vector{1});
    EXPECT_EQ(rows.lstv_pattern.selected(), 1);
    EXPECT_TRUE(checked_rows(rows.lstv_timing).empty());
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(favorite_fallback, checks_both_timings_before_it_sends) {
    std::vector<int> checked;
    m.port.on_write = [&, answer = m.port.on_write](const std::string& cmd) {
        if (cmd == "FT+001") checked = checked_rows(rows.lstv_timing);
        answer(cmd);
    };
    set_in(2);
    EXPECT_EQ(checked, (std::vector{1, 23}));
}

TEST_F(favorite_fallback, sends_no_second_timing_if_the_first_fails) {
    answers["FT+001"] = "";
    set_in(2);
    EXPECT_EQ(m.port.take_written(), (strings{"FT-001", "FT-002", "FT+001", "FT+001"}));
    EXPECT_EQ(m.boxes.all, boxes{test::box_link_error});
    EXPECT_EQ(checked_rows(rows.lstv_timing), (std::vector{1, 23})) << "they stay checked";
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(favorite_fallback, ignores_a_failure_of_the_second_timing) {
    answers["FT+023"] = "";
    set_in(2);
    EXPECT_EQ(m.port.take_written(), (strings{"FT-001", "FT-002", "FT+001", "FT+023", "FT+023"}));
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(favorite_fallback, reports_a_failed_pattern) {
    answers["FP+001"] = "";
    set_in(3);
    EXPECT_EQ(m.port.take_written(), (strings{"FP-001", "FP-002", "FP+001", "FP+001"}));
    EXPECT_EQ(m.boxes.all, boxes{test::box_link_error});
    EXPECT_EQ(checked_rows(rows.lstv_pattern), std::vector{1});
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(favorite_fallback, keeps_download_disabled_to_its_end) {
    film([this] { return look(); });
    const std::string busy = "red disabled, no download";
    answers["FP+001"] = "";
    for (const int view : {2, 3}) {
        frames.clear();
        set_in(view);
        EXPECT_EQ(frames.front(), "grey disabled");
        for (std::size_t i = 1; i < frames.size(); ++i)
            EXPECT_TRUE(frames[i].ends_with(busy)) << frames[i];
    }
    EXPECT_EQ(frames.back(), "box: " + busy);
}

class small_catalogue : public set_test {
protected:
    small_catalogue() : set_test(22, 1) {}
};

TEST_F(small_catalogue, cannot_take_the_second_timing_of_the_fallback) {
    enter(2);
    EXPECT_EQ(failure_of([this] { desk_area.cmd_run.on_click(); }), failure::index_out_of_bounds);
    EXPECT_EQ(m.port.take_written().size(), 22U) << "the fallback has sent nothing";
    EXPECT_EQ(checked_rows(rows.lstv_timing), std::vector{1});
}

TEST_F(small_catalogue, can_take_the_fallback_of_the_patterns) {
    enter(3);
    desk_area.cmd_run.on_click();
    EXPECT_EQ(m.port.take_written(), (strings{"FP-001", "FP+001"}));
}

class autorun_hand_over : public set_test {
protected:
    autorun_hand_over() { enter(5); }
};

TEST_F(autorun_hand_over, sends_the_whole_autorun_list) {
    desk_area.cmd_run.on_click();
    const strings sent = m.port.take_written();
    ASSERT_EQ(sent.size(), 128U);
    EXPECT_EQ(sent.front(), "ATN001");
    EXPECT_EQ(sent.at(124), "ATN032");
    EXPECT_EQ(sent.back(), "ATI000");
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(autorun_hand_over, keeps_download_disabled_meanwhile) {
    film([this] { return look(); });
    answers["ATT001"] = "";
    desk_area.cmd_run.on_click();
    const std::string busy = "red disabled, no download";
    EXPECT_EQ(frames, (strings{"grey disabled", "ATN001: " + busy, busy, "ATT001: " + busy, busy, "ATT001: " + busy,
                               busy, "box: " + busy}));
    EXPECT_EQ(look(), "grey enabled");
}

} // namespace
} // namespace desk
