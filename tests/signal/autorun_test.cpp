#include "signal/autorun.h"

#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::boxes;
using test::strings;

class autorun_test : public test::signal_fixture {
protected:
    autorun_test() { enter(5); }
    void set_row(int number, const std::string& timing, const std::string& pattern, const std::string& interval) {
        steps.lstv_auto.set_sub_item(number, 1, timing);
        steps.lstv_auto.set_sub_item(number, 2, pattern);
        steps.lstv_auto.set_sub_item(number, 3, interval);
    }
    void choose(int timing, int pattern, int interval) {
        rows.cbo_timing.set_list_index(timing);
        rows.cbo_pattern.set_list_index(pattern);
        steps.cbo_interval.set_list_index(interval);
    }
    std::vector<int> chosen() const {
        return {rows.cbo_timing.list_index(), rows.cbo_pattern.list_index(), steps.cbo_interval.list_index()};
    }
};

class autorun_list : public autorun_test {};

TEST_F(autorun_list, has_these_columns) {
    strings titles;
    for (const list_column& column : steps.lstv_auto.columns)
        titles.push_back(column.title);
    EXPECT_EQ(titles, (strings{"No.", "Timing", "Pattern", "Interval (sec)"}));
}

TEST_F(autorun_list, starts_with_32_unused_rows) {
    ASSERT_EQ(steps.lstv_auto.row_count(), 32);
    for (int i = 1; i <= 32; ++i)
        EXPECT_EQ(autorun_row(i), unused_row(i));
}

TEST_F(autorun_list, offers_31_intervals) {
    EXPECT_EQ(steps.cbo_interval.items(),
              (strings{"5",   "10",  "15",  "20",  "25",  "30",  "40",  "50",  "60",  "70",  "80",
                       "90",  "100", "110", "120", "150", "180", "210", "240", "270", "300", "330",
                       "360", "390", "420", "450", "480", "510", "540", "570", "600"}));
}

class autorun_entry : public autorun_test {
protected:
    autorun_entry() {
        for (control* c : std::vector<control*>{&steps.fra_auto, &desk_area.cmd_run, &desk_area.cmd_download})
            c->visible = false;
    }
};

TEST_F(autorun_entry, changes_the_view_before_it_shows_anything) {
    std::vector<int> views;
    bool shown = true;
    rows.change_view = [&](int view) {
        views.push_back(view);
        shown = steps.fra_auto.visible || desk_area.cmd_run.visible || desk_area.cmd_download.visible;
    };
    steps.cmd_auto.on_click();
    EXPECT_EQ(views, std::vector{5});
    EXPECT_FALSE(shown);
}

TEST_F(autorun_entry, shows_the_frame_with_set_and_download) {
    steps.cmd_auto.on_click();
    EXPECT_TRUE(steps.fra_auto.visible);
    EXPECT_TRUE(desk_area.cmd_run.visible);
    EXPECT_TRUE(desk_area.cmd_download.visible);
    EXPECT_EQ(desk_area.cmd_download.left, 2700);
    EXPECT_EQ(desk_area.cmd_download.top, 2100);
    EXPECT_EQ(steps.lab_auto.caption, "Press [Download] to download VELOTRACE Autorun settings.\r\n"
                                      "Press [Add/Replace], [Delete] to Edit your Autorun settings.\r\n"
                                      "Press [SET] to upload Autorun settings to VELOTRACE.");
}

TEST_F(autorun_entry, starts_the_editing_fields_at_their_first_items) {
    choose(4, 5, 6);
    steps.cmd_auto.on_click();
    EXPECT_EQ(chosen(), (std::vector{0, 0, 0}));
    EXPECT_EQ(steps.cbo_interval.text(), "5");
}

TEST_F(autorun_entry, leaves_the_table_and_sends_nothing) {
    set_row(3, "a", "b", "5");
    steps.cmd_auto.on_click();
    EXPECT_EQ(autorun_row(3), (strings{"3", "a", "b", "5"}));
    EXPECT_TRUE(m.port.take_written().empty());
}

class autorun_editor : public autorun_test {};

TEST_F(autorun_editor, adds_and_replaces_on_the_selected_row) {
    steps.lstv_auto.select(3);
    choose(11, 6, 30);
    steps.cmd_replace.on_click();
    EXPECT_EQ(autorun_row(3), (strings{"3", "[12] timing", "[07] pattern", "600"}));
    choose(0, 44, 0);
    steps.cmd_replace.on_click();
    EXPECT_EQ(autorun_row(3), (strings{"3", "[01] timing", "[45] pattern", "5"}));
    EXPECT_EQ(autorun_row(2), unused_row(2));
    EXPECT_EQ(autorun_row(4), unused_row(4));
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(autorun_editor, has_32_rows_before_and_after) {
    steps.lstv_auto.select(32);
    choose(1, 1, 1);
    steps.cmd_replace.on_click();
    EXPECT_EQ(autorun_row(32), (strings{"32", "[02] timing", "[02] pattern", "10"}));
    EXPECT_EQ(steps.lstv_auto.row_count(), 32);
    steps.cmd_delete.on_click();
    EXPECT_EQ(steps.lstv_auto.row_count(), 32);
}

TEST_F(autorun_editor, leaves_a_gap_after_a_delete) {
    for (const int i : {4, 5, 6})
        set_row(i, "timing " + std::to_string(i), "pattern", "5");
    steps.lstv_auto.select(5);
    steps.cmd_delete.on_click();
    EXPECT_EQ(autorun_row(4), (strings{"4", "timing 4", "pattern", "5"}));
    EXPECT_EQ(autorun_row(5), unused_row(5));
    EXPECT_EQ(autorun_row(6), (strings{"6", "timing 6", "pattern", "5"}));
    EXPECT_EQ(steps.lstv_auto.selected(), 5);
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(autorun_editor, does_nothing_without_a_row) {
    choose(4, 5, 6);
    steps.lstv_auto.clear();
    steps.cmd_replace.on_click();
    steps.cmd_delete.on_click();
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(steps.lstv_auto.row_count(), 0);
    EXPECT_EQ(chosen(), (std::vector{4, 5, 6}));
}

TEST_F(autorun_editor, loads_a_row_back_on_a_double_click) {
    steps.lstv_auto.select(9);
    set_row(9, "[30] timing", "[45] pattern", "600");
    choose(1, 1, 1);
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(chosen(), (std::vector{29, 44, 30}));
    EXPECT_EQ(autorun_row(9), (strings{"9", "[30] timing", "[45] pattern", "600"}));
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(autorun_editor, finds_the_first_item_too) {
    set_row(1, "[01] timing", "[01] pattern", "5");
    choose(1, 1, 1);
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(chosen(), (std::vector{0, 0, 0}));
}

TEST_F(autorun_editor, takes_the_first_of_equal_names) {
    rows.cbo_timing.add_item("[30] timing", 30);
    set_row(1, "[30] timing", "", "0");
    choose(1, 1, 1);
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(chosen(), (std::vector{29, 1, 1}));
}

TEST_F(autorun_editor, keeps_the_choice_for_an_unused_row) {
    choose(4, 5, 6);
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(chosen(), (std::vector{4, 5, 6}));
}

TEST_F(autorun_editor, keeps_each_choice_that_has_no_equal_item) {
    choose(4, 5, 6);
    set_row(1, "[02] TIMING", "[03] pattern", "7");
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(chosen(), (std::vector{4, 2, 6}));
    set_row(1, "[02] timing", " [03] pattern", "10");
    choose(4, 5, 6);
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(chosen(), (std::vector{1, 5, 1}));
}

TEST_F(autorun_editor, trims_only_the_interval) {
    choose(4, 5, 6);
    set_row(1, "[02] timing ", " [03] pattern", " 25 ");
    steps.lstv_auto.on_double_click();
    EXPECT_EQ(chosen(), (std::vector{4, 5, 4}));
}

class autorun_upload : public autorun_test {
protected:
    /// What goes out for the row.
    strings upload_of(int number) {
        m.port.take_written();
        steps.upload_autorun();
        const strings all = m.port.take_written();
        EXPECT_EQ(all.size(), 128U);
        const auto from = all.begin() + 4 * (number - 1);
        return all.size() == 128U ? strings(from, from + 4) : all;
    }
    static std::string three(int number) { return (number < 10 ? "00" : "0") + std::to_string(number); }
};

TEST_F(autorun_upload, sends_32_unused_rows_of_a_fresh_table) {
    strings expected;
    for (int i = 1; i <= 32; ++i) {
        expected.push_back("ATN" + three(i));
        for (const char* cmd : {"ATT001", "ATP001", "ATI000"})
            expected.emplace_back(cmd);
    }
    steps.upload_autorun();
    EXPECT_EQ(m.port.take_written(), expected);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(autorun_upload, sends_a_used_row_in_its_round) {
    set_row(3, "[12] timing", "[07] pattern", "600");
    EXPECT_EQ(upload_of(3), (strings{"ATN003", "ATT012", "ATP007", "ATI600"}));
    EXPECT_EQ(upload_of(2), (strings{"ATN002", "ATT001", "ATP001", "ATI000"}));
    EXPECT_EQ(upload_of(4), (strings{"ATN004", "ATT001", "ATP001", "ATI000"}));
}

TEST_F(autorun_upload, sends_the_first_and_the_last_row_like_any_other) {
    for (const int i : {1, 32}) {
        set_row(i, "[30] timing", "[45] pattern", "5");
        EXPECT_EQ(upload_of(i), (strings{"ATN" + three(i), "ATT030", "ATP045", "ATI005"}));
    }
}

TEST_F(autorun_upload, sends_the_unused_form_after_a_delete) {
    set_row(3, "[12] timing", "[07] pattern", "600");
    set_row(4, "[13] timing", "[08] pattern", "5");
    steps.lstv_auto.select(3);
    steps.cmd_delete.on_click();
    EXPECT_EQ(upload_of(3), (strings{"ATN003", "ATT001", "ATP001", "ATI000"}));
    EXPECT_EQ(upload_of(4), (strings{"ATN004", "ATT013", "ATP008", "ATI005"}));
}

TEST_F(autorun_upload, recognizes_an_unused_row_by_its_interval_only) {
    set_row(1, "[12] timing", "[07] pattern", "0");
    EXPECT_EQ(upload_of(1), (strings{"ATN001", "ATT001", "ATP001", "ATI000"}));
    set_row(1, "", "", "10");
    EXPECT_EQ(upload_of(1), (strings{"ATN001", "ATT000", "ATP000", "ATI010"}));
}

TEST_F(autorun_upload, takes_the_numbers_out_of_the_names_and_not_from_the_lists) {
    set_row(1, "[45] no timing", "[30] timing", "10");
    EXPECT_EQ(upload_of(1), (strings{"ATN001", "ATT045", "ATP030", "ATI010"}));
}

TEST_F(autorun_upload, reads_the_second_and_third_characters_as_a_number) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"[07] x", "007"}, {"[ 7] x", "007"}, {"[7 ] x", "007"}, {"[7] x", "007"},  {"[99]", "099"},
        {"[123]", "012"},  {"x12", "012"},    {"012", "012"},    {"12", "002"},     {"1", "000"},
        {"", "000"},       {"[] x", "000"},   {"name", "000"},   {"[x7] y", "000"}, {"[  ] 12", "000"}};
    for (const auto& [name, number] : cases) {
        set_row(1, name, "[01]", "10");
        EXPECT_EQ(upload_of(1), (strings{"ATN001", "ATT" + number, "ATP001", "ATI010"})) << name;
        set_row(1, "[01]", name, "10");
        EXPECT_EQ(upload_of(1), (strings{"ATN001", "ATT001", "ATP" + number, "ATI010"})) << name;
    }
}

TEST_F(autorun_upload, counts_characters_and_not_bytes) {
    for (const char* name : {"«12» x", "é12", "€12", "漢12",
                             "\xAB"
                             "12\xBB"}) {
        set_row(1, name, name, "10");
        EXPECT_EQ(upload_of(1), (strings{"ATN001", "ATT012", "ATP012", "ATI010"})) << name;
    }
    set_row(1, "[é7]", "[7é]", "10");
    EXPECT_EQ(upload_of(1), (strings{"ATN001", "ATT000", "ATP007", "ATI010"}));
}

TEST_F(autorun_upload, stops_at_each_exchange_that_fails_with_one_box) {
    set_row(2, "[12] timing", "[07] pattern", "600");
    strings sent;
    for (const char* failing : {"ATN001", "ATT001", "ATP001", "ATI000", "ATN002", "ATT012", "ATP007", "ATI600"}) {
        sent.emplace_back(failing);
        strings expected = sent;
        expected.emplace_back(failing); // the second try
        answers = {{failing, ""}};
        steps.upload_autorun();
        EXPECT_EQ(m.port.take_written(), expected);
        EXPECT_EQ(std::exchange(m.boxes.all, {}), boxes{test::box_link_error}) << failing;
    }
    EXPECT_EQ(autorun_row(2), (strings{"2", "[12] timing", "[07] pattern", "600"})) << "the table stays";
}

TEST_F(autorun_upload, continues_after_any_answer_with_the_right_letters) {
    answers = {{"ATN001", "ATN999"}, {"ATT001", "ATT000"}};
    steps.upload_autorun();
    EXPECT_EQ(m.port.take_written().size(), 128U);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(autorun_upload, leaves_the_table) {
    set_row(3, "[12] timing", "[07] pattern", "600");
    steps.upload_autorun();
    EXPECT_EQ(autorun_row(3), (strings{"3", "[12] timing", "[07] pattern", "600"}));
    EXPECT_EQ(autorun_row(4), unused_row(4));
    EXPECT_EQ(steps.lstv_auto.row_count(), 32);
}

} // namespace
} // namespace desk
