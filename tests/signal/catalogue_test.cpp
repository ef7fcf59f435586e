#include "signal/catalogue.h"

#include "controls/window.h"
#include "runtime/text.h"
#include "support/desk_files.h"
#include "support/expect_failure.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::failure_of;
using strings = std::vector<std::string>;

const std::string two_and_three = "2\r\n"
                                  "\"[01] one, quoted\",800,640,16,96,\"-\",525,480,10,2,\"+\",25.175\r\n"
                                  "   [02] two,900,720,18,108,neg,449,400,12,2,pos,28.322\r\n"
                                  "3\r\n\"[01] bar\"\r\n\"[02] dots, red\"\r\n[03] grey\r\n";

class catalogue_test : public testing::Test {
protected:
    catalogue_test() {
        form.add(rows.lstv_timing);
        form.add(rows.lstv_pattern);
        rows.change_view = [this](int view) {
            views.push_back(view);
            link.view_mode = static_cast<std::int16_t>(view);
        };
        for (control* c : work_area())
            c->visible = false;
        rows.lstv_timing.visible = false;
        rows.lstv_pattern.visible = false;
    }
    std::vector<control*> work_area() {
        return {&desk_area.fra_desk,       &desk_area.lab_desk_note,
                &desk_area.cmd_run,        &desk_area.cmd_download,
                &desk_area.fra_hori,       &desk_area.fra_vert,
                &desk_area.lab_pix_clock,  &desk_area.txt_pix_f,
                &desk_area.txt_motion_str, &desk_area.lab_motion_str,
                &desk_area.cmd_upload,     &desk_area.cmd_check_all,
                &desk_area.cmd_check_none, &desk_area.hsr_color_setting[0]};
    }
    /// Loads a catalogue of plain rows.
    void load_plain(int timings, int patterns) { rows.load(test::plain_catalogue(timings, patterns)); }
    /// Loads one timing with these figures and shows it.
    void show(const std::string& figures) {
        rows.lstv_timing.clear();
        rows.lstv_timing_sub.clear();
        rows.load("1\r\n\"row\"," + figures + "\r\n0\r\n");
        rows.show_timing_detail();
    }

    test::fake_machine m;
    exchange link{m.host};
    desk_frame desk_area;
    status_frame status;
    catalogue rows{link, desk_area, status};
    window form;
    std::vector<int> views;
};

TEST_F(catalogue_test, has_these_columns) {
    ASSERT_EQ(rows.lstv_timing.columns.size(), 1U);
    EXPECT_EQ(rows.lstv_timing.columns[0].title, "Timings");
    ASSERT_EQ(rows.lstv_pattern.columns.size(), 1U);
    EXPECT_EQ(rows.lstv_pattern.columns[0].title, "Patterns");
    strings titles;
    for (const list_column& column : rows.lstv_timing_sub.columns)
        titles.push_back(column.title);
    EXPECT_EQ(titles, (strings{"htotal", "hactive", "hdelay", "hsw", "hpol", "vtotal", "vactive", "vdelay", "vsw",
                               "vpol", "pix_f"}));
}

TEST_F(catalogue_test, fills_the_lists_by_row_number) {
    rows.load(two_and_three);
    EXPECT_EQ(link.fav_timing_count, 2);
    EXPECT_EQ(link.fav_pattern_count, 3);
    EXPECT_EQ(rows.lstv_timing.row_count(), 2);
    EXPECT_EQ(rows.lstv_timing.text(1), "[01] one, quoted");
    EXPECT_EQ(rows.lstv_timing.text(2), "[02] two");
    EXPECT_EQ(rows.lstv_pattern.row_count(), 3);
    EXPECT_EQ(rows.lstv_pattern.text(2), "[02] dots, red");
    EXPECT_EQ(rows.lstv_pattern.text(3), "[03] grey");
    EXPECT_EQ(rows.cbo_timing.items(), (strings{"[01] one, quoted", "[02] two"}));
    EXPECT_EQ(rows.cbo_pattern.items(), (strings{"[01] bar", "[02] dots, red", "[03] grey"}));
    EXPECT_EQ(rows.lstv_timing.selected(), 1);
    EXPECT_EQ(rows.lstv_pattern.selected(), 1);
}

TEST_F(catalogue_test, holds_the_figures_of_a_row_as_text) {
    rows.load(two_and_three);
    EXPECT_EQ(rows.lstv_timing_sub.row_count(), 2);
    EXPECT_EQ(rows.lstv_timing_sub.text(2), "900");
    const strings expected{"720", "18", "108", "neg", "449", "400", "12", "2", "pos"};
    for (int sub = 1; sub <= 9; ++sub)
        EXPECT_EQ(rows.lstv_timing_sub.sub_item(2, sub), expected.at(static_cast<std::size_t>(sub - 1)));
    EXPECT_EQ(val(rows.lstv_timing_sub.sub_item(2, 10)), 28.322);
}

TEST_F(catalogue_test, reads_nothing_after_the_last_pattern) {
    rows.load("0\r\n1\r\n\"[01] bar\"\r\nanything at all\r\n,,,");
    EXPECT_EQ(link.fav_pattern_count, 1);
    EXPECT_EQ(rows.lstv_pattern.row_count(), 1);
}

TEST_F(catalogue_test, counts_values_and_not_lines) {
    rows.load("1,\"[01] a\"\r\n800,640\r\n16,96,-\r\n525,480,10,2,+,25.175,2,[01] x,[02] y");
    EXPECT_EQ(rows.lstv_timing_sub.sub_item(1, 8), "2");
    EXPECT_EQ(rows.lstv_pattern.text(2), "[02] y");
}

TEST_F(catalogue_test, can_be_empty) {
    rows.load("0\r\n0\r\n");
    EXPECT_EQ(rows.lstv_timing.row_count(), 0);
    EXPECT_EQ(rows.lstv_pattern.row_count(), 0);
}

TEST_F(catalogue_test, shows_the_windows_characters_of_its_names) {
    rows.load("0\r\n1\r\n\"[01] Gr\xFCn\"\r\n");
    EXPECT_EQ(rows.lstv_pattern.text(1), "[01] Grün");
}

TEST_F(catalogue_test, fails_if_it_is_shorter_than_its_counts) {
    for (const char* text : {"", "2\r\n", "1\r\n\"a\",800,640", "0\r\n", "0\r\n2\r\n\"a\"\r\n",
                             "2\r\n\"a\",800,640,16,96,\"-\",525,480,10,2,\"+\",25\r\n"}) {
        test::fake_machine machine;
        exchange other_link{machine.host};
        catalogue other{other_link, desk_area, status};
        EXPECT_EQ(failure_of([&] { other.load(text); }), failure::input_past_end_of_file) << text;
    }
}

TEST_F(catalogue_test, fails_for_values_that_are_no_number_or_do_not_fit) {
    const std::string rest = ",640,16,96,\"-\",525,480,10,2,\"+\",";
    EXPECT_EQ(failure_of([&] { rows.load("1\r\n\"a\",32768" + rest + "25\r\n0\r\n"); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { rows.load("1\r\n\"a\",800" + rest + "1E39\r\n0\r\n"); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { rows.load("40000\r\n"); }), failure::overflow);
    EXPECT_EQ(failure_of([&] { rows.load("1\r\n\"a\",wide" + rest + "25\r\n0\r\n"); }), failure::type_mismatch);
    EXPECT_EQ(failure_of([&] { rows.load("many\r\n"); }), failure::type_mismatch);
}

TEST_F(catalogue_test, reports_which_row_could_not_be_read) {
    try {
        rows.load("2\r\n\"a\",800,640,16,96,\"-\",525,480,10,2,\"+\",25\r\n\"b\",x");
        FAIL() << "nothing was thrown";
    } catch (const runtime_failure& f) {
        EXPECT_NE(f.sentence().find("timing 2"), std::string::npos) << f.sentence();
    }
}

class timing_detail : public catalogue_test {};

TEST_F(timing_detail, copies_the_row) {
    rows.load(two_and_three);
    rows.lstv_timing.select(2);
    rows.show_timing_detail();
    const desk_frame& d = desk_area;
    EXPECT_EQ(d.fra_desk.caption, "[02] two");
    EXPECT_EQ(d.txt_htotal_pix.text, "900");
    EXPECT_EQ(d.txt_hactive_pix.text, "720");
    EXPECT_EQ(d.txt_hdelay_pix.text, "18");
    EXPECT_EQ(d.txt_hsw_pix.text, "108");
    EXPECT_EQ(d.txt_hpol.text, "neg");
    EXPECT_EQ(d.txt_vtotal_line.text, "449");
    EXPECT_EQ(d.txt_vactive_line.text, "400");
    EXPECT_EQ(d.txt_vdelay_line.text, "12");
    EXPECT_EQ(d.txt_vsw_line.text, "2");
    EXPECT_EQ(d.txt_vpol.text, "pos");
    EXPECT_EQ(d.txt_pix_f.text, "28.322");
}

TEST_F(timing_detail, works_the_figures_out) {
    show("900,720,18,108,-,449,400,12,2,+,28.322");
    const desk_frame& d = desk_area;
    EXPECT_EQ(d.txt_htotal_us.text, "31.777");
    EXPECT_EQ(d.txt_hactive_us.text, "25.422");
    EXPECT_EQ(d.txt_hdelay_us.text, "0.636");
    EXPECT_EQ(d.txt_hsw_us.text, "3.813");
    EXPECT_EQ(d.txt_vtotal_ms.text, "14.268");
    EXPECT_EQ(d.txt_vactive_ms.text, "12.711");
    EXPECT_EQ(d.txt_vdelay_ms.text, "0.381");
    EXPECT_EQ(d.txt_vsw_ms.text, "0.064");
    EXPECT_EQ(d.txt_hf.text, "31.469");
    EXPECT_EQ(d.txt_vf.text, "70.087");
}

TEST_F(timing_detail, shows_20_us_and_50_khz_for_2000_pixels_at_100_mhz) {
    show("2000,1600,200,50,+,1000,900,40,5,-,100");
    EXPECT_EQ(desk_area.txt_htotal_us.text, "20.000");
    EXPECT_EQ(desk_area.txt_hf.text, "50.000");
}

TEST_F(timing_detail, shows_one_half_in_two_ways_and_a_slow_clock_without_its_zero) {
    show("4000,3000,10,1,+,1000,900,2,1,+,2");
    EXPECT_EQ(desk_area.txt_hf.text, ".500");
    EXPECT_EQ(desk_area.txt_vf.text, ".500");
    EXPECT_EQ(desk_area.txt_hsw_us.text, "0.500");
    show("1000,800,1,0,-,1000,600,0,1,-,.5");
    EXPECT_EQ(desk_area.txt_pix_f.text, ".500");
    EXPECT_EQ(desk_area.txt_hsw_us.text, "0.000");
    show("1000,800,1,1,+,1000,600,1,1,+,74.1745");
    EXPECT_EQ(desk_area.txt_pix_f.text, "74.175") << "rounded by its digits";
}

TEST_F(timing_detail, rounds_half_up) {
    show("1024,1000,1,3,+,625,600,1,2,-,16");
    EXPECT_EQ(desk_area.txt_hdelay_us.text, "0.063") << "0.0625";
    EXPECT_EQ(desk_area.txt_hsw_us.text, "0.188") << "0.1875";
}

TEST_F(timing_detail, has_the_clock_in_32_bits_and_works_in_64) {
    show("11200,8000,100,70,+,100,90,5,2,+,.7");
    EXPECT_EQ(desk_area.txt_hf.text, ".062") << "a little below .0625: 0.7 in 32 bits is 0.699999988";
    EXPECT_EQ(desk_area.txt_vf.text, ".625");
}

TEST_F(timing_detail, puts_its_boxes_on_show) {
    show("900,720,18,108,-,449,400,12,2,+,28.322");
    EXPECT_TRUE(desk_area.fra_hori.visible);
    EXPECT_TRUE(desk_area.fra_vert.visible);
    EXPECT_TRUE(desk_area.lab_pix_clock.visible);
    EXPECT_TRUE(desk_area.txt_pix_f.visible);
    EXPECT_FALSE(desk_area.cmd_run.visible);
}

TEST_F(timing_detail, fails_for_a_zero_in_the_divisors) {
    EXPECT_EQ(failure_of([&] { show("1650,1280,110,40,+,750,720,5,5,+,0"); }), failure::division_by_zero);
    EXPECT_EQ(failure_of([&] { show("0,1280,110,40,+,750,720,5,5,+,74.25"); }), failure::division_by_zero);
}

TEST_F(timing_detail, reports_which_row_could_not_be_shown) {
    try {
        show("1650,1280,110,40,+,750,720,5,5,+,0");
        FAIL() << "nothing was thrown";
    } catch (const runtime_failure& f) {
        EXPECT_NE(f.sentence().find("row"), std::string::npos) << f.sentence();
    }
}

class pattern_extras : public catalogue_test {
protected:
    pattern_extras() { load_plain(1, 45); }
    void choose(int row) {
        rows.lstv_pattern.select(row);
        rows.show_pattern_extras();
    }
    void expect_sets(bool download, bool motion, bool colors) {
        EXPECT_EQ(desk_area.cmd_download.visible, download);
        EXPECT_EQ(desk_area.txt_motion_str.visible, motion);
        EXPECT_EQ(desk_area.lab_motion_str.visible, motion);
        EXPECT_EQ(desk_area.cmd_upload.visible, motion);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(desk_area.hsr_color_setting.at(i).visible, colors) << i;
            EXPECT_EQ(desk_area.lab_color_setting.at(i).visible, colors) << i;
            EXPECT_EQ(desk_area.txt_color_setting.at(i).visible, colors) << i;
        }
    }
    const std::string note = "Select a pattern in pattern table.\r\n"
                             "Press [SET] to upload the selected pattern to VELOTRACE.";
};

TEST_F(pattern_extras, are_none_for_most_rows) {
    for (const int row : {1, 12, 14, 40, 42, 45}) {
        choose(row);
        expect_sets(false, false, false);
        EXPECT_EQ(desk_area.lab_desk_note.caption, note);
    }
}

TEST_F(pattern_extras, are_the_motion_set_for_row_41) {
    choose(41);
    expect_sets(true, true, false);
    EXPECT_EQ(desk_area.lab_desk_note.caption, note + "\r\nPress [Download] to get VELOTRACE's custom string");
}

TEST_F(pattern_extras, are_the_color_set_for_row_13) {
    choose(13);
    expect_sets(true, false, true);
    EXPECT_EQ(desk_area.lab_desk_note.caption, note + "\r\nPress [Download] to get VELOTRACE's Color Settings.");
}

TEST_F(pattern_extras, give_place_to_each_other) {
    choose(13);
    choose(41);
    expect_sets(true, true, false);
    choose(14);
    expect_sets(false, false, false);
}

TEST_F(pattern_extras, leave_the_colors_disabled_until_a_download) {
    for (std::size_t i = 0; i < 4; ++i) {
        desk_area.lab_color_setting.at(i).caption = "Red";
        desk_area.txt_color_setting.at(i).text = "128";
        desk_area.txt_color_setting.at(i).enabled = true;
        desk_area.hsr_color_setting.at(i).enabled = true;
    }
    choose(13);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(desk_area.lab_color_setting.at(i).caption, "?");
        EXPECT_EQ(desk_area.txt_color_setting.at(i).text, "");
        EXPECT_FALSE(desk_area.txt_color_setting.at(i).enabled);
        EXPECT_FALSE(desk_area.hsr_color_setting.at(i).enabled);
    }
}

class select_views : public catalogue_test {
protected:
    select_views() { load_plain(5, 45); }
};

TEST_F(select_views, show_the_timings) {
    rows.lstv_timing.check_boxes = true;
    rows.cmd_timing.on_click();
    EXPECT_EQ(views, std::vector<int>{0});
    EXPECT_TRUE(rows.lstv_timing.visible);
    EXPECT_FALSE(rows.lstv_pattern.visible);
    EXPECT_TRUE(desk_area.fra_desk.visible);
    EXPECT_TRUE(desk_area.cmd_run.visible);
    EXPECT_TRUE(desk_area.lab_desk_note.visible);
    EXPECT_FALSE(desk_area.cmd_download.visible);
    EXPECT_FALSE(rows.lstv_timing.check_boxes);
    EXPECT_TRUE(rows.lstv_timing.has_focus());
    EXPECT_EQ(desk_area.lab_desk_note.caption, "Select a timing in timing table.\r\n"
                                               "Press [SET] to upload the selected timing to VELOTRACE.");
    EXPECT_EQ(desk_area.fra_desk.caption, "timing 1");
}

TEST_F(select_views, let_events_run_before_the_list_has_the_focus) {
    bool had_it = true;
    bool on_show = false;
    m.events.on_pump = [&] {
        had_it = rows.lstv_timing.has_focus();
        on_show = rows.lstv_timing.visible;
    };
    rows.cmd_timing_click();
    EXPECT_FALSE(had_it);
    EXPECT_TRUE(on_show);
}

TEST_F(select_views, return_to_the_timing_that_the_generator_shows) {
    rows.cur_timing = 4;
    rows.cmd_timing_click();
    EXPECT_EQ(rows.lstv_timing.selected(), 4);
    EXPECT_EQ(status.lab_timing.caption, "timing 4");
    EXPECT_EQ(desk_area.fra_desk.caption, "timing 4");
}

TEST_F(select_views, keep_the_selection_if_the_timing_is_unknown) {
    rows.lstv_timing.select(3);
    status.lab_timing.caption = "Link Error";
    rows.cmd_timing_click();
    EXPECT_EQ(rows.lstv_timing.selected(), 3);
    EXPECT_EQ(status.lab_timing.caption, "Link Error");
}

TEST_F(select_views, show_the_patterns) {
    rows.lstv_pattern.check_boxes = true;
    rows.cmd_pattern.on_click();
    EXPECT_EQ(views, std::vector<int>{1});
    EXPECT_TRUE(rows.lstv_pattern.visible);
    EXPECT_FALSE(rows.lstv_timing.visible);
    EXPECT_TRUE(desk_area.fra_desk.visible);
    EXPECT_TRUE(desk_area.cmd_run.visible);
    EXPECT_TRUE(desk_area.lab_desk_note.visible);
    EXPECT_FALSE(desk_area.cmd_download.visible);
    EXPECT_EQ(desk_area.cmd_download.left, 5640);
    EXPECT_EQ(desk_area.cmd_download.top, 2250);
    EXPECT_FALSE(rows.lstv_pattern.check_boxes);
    EXPECT_TRUE(rows.lstv_pattern.has_focus());
    EXPECT_EQ(desk_area.fra_desk.caption, "pattern 1");
}

TEST_F(select_views, return_to_the_pattern_that_the_generator_shows) {
    rows.cur_pattern = 41;
    rows.cmd_pattern_click();
    EXPECT_EQ(rows.lstv_pattern.selected(), 41);
    EXPECT_EQ(status.lab_pattern.caption, "pattern 41");
    EXPECT_EQ(desk_area.fra_desk.caption, "pattern 41");
    EXPECT_TRUE(desk_area.txt_motion_str.visible);
}

TEST_F(select_views, follow_the_list_by_click_and_by_key) {
    rows.cmd_timing_click();
    rows.lstv_timing.select(2);
    rows.lstv_timing.on_click();
    EXPECT_EQ(desk_area.fra_desk.caption, "timing 2");
    rows.lstv_timing.select(3);
    rows.lstv_timing.on_key_up();
    EXPECT_EQ(desk_area.fra_desk.caption, "timing 3");
    rows.cmd_pattern_click();
    rows.lstv_pattern.select(13);
    rows.lstv_pattern.on_click();
    EXPECT_EQ(desk_area.fra_desk.caption, "pattern 13");
    EXPECT_TRUE(desk_area.hsr_color_setting[0].visible);
    rows.lstv_pattern.select(14);
    rows.lstv_pattern.on_key_up();
    EXPECT_EQ(desk_area.fra_desk.caption, "pattern 14");
    EXPECT_FALSE(desk_area.hsr_color_setting[0].visible);
}

TEST_F(select_views, follow_no_list_of_another_view) {
    rows.cmd_timing_click();
    link.view_mode = 2;
    rows.lstv_timing.select(2);
    rows.lstv_timing.on_click();
    rows.lstv_timing.on_key_up();
    EXPECT_EQ(desk_area.fra_desk.caption, "timing 1");
    link.view_mode = 3;
    rows.lstv_pattern.select(13);
    rows.lstv_pattern.on_click();
    rows.lstv_pattern.on_key_up();
    EXPECT_EQ(desk_area.fra_desk.caption, "timing 1");
    EXPECT_FALSE(desk_area.hsr_color_setting[0].visible);
}

class check_buttons : public catalogue_test {
protected:
    check_buttons() { load_plain(4, 3); }
    static int checked_rows(const list_view& list) {
        int count = 0;
        for (int i = 1; i <= list.row_count(); ++i)
            count += list.row(i).checked ? 1 : 0;
        return count;
    }
};

TEST_F(check_buttons, check_all_rows_of_the_list_in_a_favorite_view_and_send_nothing) {
    link.com_port = 1;
    link.set_comm();
    for (const int view : {2, 3}) {
        const list_view& list = view == 2 ? rows.lstv_timing : rows.lstv_pattern;
        link.view_mode = static_cast<std::int16_t>(view);
        desk_area.cmd_check_all.on_click();
        EXPECT_EQ(checked_rows(list), list.row_count());
        EXPECT_EQ(checked_rows(rows.lstv_timing) + checked_rows(rows.lstv_pattern), list.row_count());
        desk_area.cmd_check_none.on_click();
        EXPECT_EQ(checked_rows(list), 0);
    }
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(check_buttons, do_nothing_in_any_other_view) {
    rows.lstv_timing.set_checked(1, true);
    rows.lstv_pattern.set_checked(1, true);
    for (const int view : {0, 1, 4, 5, 6, 254}) {
        link.view_mode = static_cast<std::int16_t>(view);
        desk_area.cmd_check_all.on_click();
        EXPECT_EQ(checked_rows(rows.lstv_timing), 1) << view;
        EXPECT_EQ(checked_rows(rows.lstv_pattern), 1) << view;
        desk_area.cmd_check_none.on_click();
        EXPECT_EQ(checked_rows(rows.lstv_timing), 1) << view;
        EXPECT_EQ(checked_rows(rows.lstv_pattern), 1) << view;
    }
}

} // namespace
} // namespace desk
