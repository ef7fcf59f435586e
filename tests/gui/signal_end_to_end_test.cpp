// The signal side through the real window: panel, favorites, autorun list, custom string and colour settings, to a
// generator on a pseudo terminal.

#include "bench_fixture.h"
#include "button_color.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidget>

#include <algorithm>
#include <iterator>

namespace desk::gui {

namespace {

class signal_end_to_end : public bench {
protected:
    signal_end_to_end() {
        plug_generator();
        start();
    }

    /// The index of the lit button of a group of the panel; -1: none is lit, -2: more than one.
    int lit(const QString& group, int count) {
        int found = -1;
        for (int i = 0; i < count; ++i) {
            if (back_of(operator_hand().find(member(group, i))) != green) continue;
            found = found == -1 ? i : -2;
        }
        return found;
    }
    static QString member(const QString& group, int index) { return group + "_" + QString::number(index); }

    /// The rows whose check boxes on the screen are checked.
    QList<int> checked_rows(const QString& list) {
        QList<int> rows;
        const auto& tree = operator_hand().find<QTreeWidget>(list);
        for (int i = 0; i < tree.topLevelItemCount(); ++i) {
            if (tree.topLevelItem(i)->checkState(0) == Qt::Checked) rows.append(i + 1);
        }
        return rows;
    }
    QString cell(const QString& list, int row, int column) {
        return operator_hand().find<QTreeWidget>(list).topLevelItem(row - 1)->text(column);
    }
    void choose_color_pattern() {
        operator_hand().click("cmd_pattern");
        operator_hand().click_row("lstv_pattern", 13);
    }
    QScrollBar& bar(int index) { return operator_hand().find<QScrollBar>(member("hsr_color_setting", index)); }
};

struct panel_group {
    const char* name;
    int count;
    const char* letters;
    int first_argument;
};

const panel_group panel_groups[] = {{"cmd_out", 4, "OUT", 1}, {"cmd_hdcp", 2, "HDC", 0}, {"cmd_asc", 3, "ASC", 1},
                                    {"cmd_csc", 3, "CSC", 1}, {"cmd_deep", 3, "DEE", 1}, {"cmd_auto_go", 2, "ATO", 0},
                                    {"cmd_fav", 2, "FAV", 0}};

TEST_F(signal_end_to_end, every_switch_of_the_panel_acts_at_once_and_lights_up) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    for (const panel_group& group : panel_groups) {
        for (int i = 0; i < group.count; ++i) {
            h.click(member(group.name, i));
            const QString command = QString("%1%2").arg(group.letters).arg(group.first_argument + i, 3, 10, QChar('0'));
            EXPECT_EQ(generator->commands().value(0), command);
            EXPECT_EQ(lit(group.name, group.count), i) << group.name;
        }
    }
    EXPECT_EQ(h.text("lab_out"), "HDMI");
    EXPECT_EQ(h.text("lab_hdcp"), "ON");
}

TEST_F(signal_end_to_end, the_channels_follow_the_audio_source) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    h.click("cmd_asc_0");
    for (int i = 0; i < 3; ++i) {
        h.click(member("cmd_lpcm", i));
        EXPECT_EQ(lit("cmd_lpcm", 3), i);
    }
    // the built-in sine has two channels and refuses more
    h.click("cmd_asc_2");
    EXPECT_EQ(generator->commands().last(2), (QStringList{"ASC003", "PCM999"}));
    EXPECT_EQ(lit("cmd_lpcm", 3), 0);
    h.click("cmd_lpcm_2");
    EXPECT_EQ(generator->traffic(), (QStringList{"> PCM003", "< PCM100"}));
    EXPECT_EQ(lit("cmd_lpcm", 3), -1);
}

TEST_F(signal_end_to_end, a_pressed_switch_is_red_and_dead_until_the_answer_comes) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    generator->tell("delay 600");
    bool red_and_dead = false;
    h.when(heard("DEE002"), [&] {
        red_and_dead = back_of(h.find("cmd_deep_1")) == red && !h.find("cmd_deep_1").isEnabled();
        h.click("cmd_deep_1");
    });
    h.click("cmd_deep_1");
    EXPECT_TRUE(red_and_dead);
    EXPECT_EQ(generator->commands(), QStringList{"DEE002"});
    EXPECT_EQ(lit("cmd_deep", 3), 1);
    EXPECT_TRUE(h.find("cmd_deep_1").isEnabled());
}

TEST_F(signal_end_to_end, another_switch_in_the_middle_of_an_exchange_comes_in_between) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    generator->tell("drop 1");
    h.when(heard("DEE002"), [&] { h.click("cmd_csc_2"); });
    h.click("cmd_deep_1");
    // the inner exchange gives the outer one its own answer, whose letters are wrong
    EXPECT_EQ(generator->commands(), (QStringList{"DEE002", "CSC003", "DEE002"}));
    EXPECT_EQ(lit("cmd_csc", 3), 2);
    EXPECT_EQ(lit("cmd_deep", 3), 1);
}

TEST_F(signal_end_to_end, reset_makes_the_panel_dark_and_download_lights_it_again) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    for (const char* press : {"cmd_out_2", "cmd_hdcp_1", "cmd_csc_1", "cmd_deep_2", "cmd_auto_go_1", "cmd_fav_1"})
        h.click(press);
    h.click("cmd_reset");
    for (const panel_group& group : panel_groups)
        EXPECT_EQ(lit(group.name, group.count), -1) << group.name;
    for (const char* label : {"lab_timing", "lab_pattern", "lab_out", "lab_hdcp"})
        EXPECT_EQ(h.text(label), "") << label;
    generator->traffic();

    h.click("cmd_download");
    EXPECT_EQ(generator->commands(), (QStringList{"TIM999", "PAT999", "OUT999", "HDC999", "ASC999", "PCM999", "CSC999",
                                                  "DEE999", "ATO999", "FAV999"}));
    for (const panel_group& group : panel_groups)
        EXPECT_GE(lit(group.name, group.count), 0) << group.name;
    EXPECT_GE(lit("cmd_lpcm", 3), 0);
    EXPECT_TRUE(h.text("lab_timing").startsWith("[01]"));
}

TEST_F(signal_end_to_end, refresh_tells_what_the_generator_outputs) {
    const hand h = operator_hand();
    h.click("cmd_timing");
    h.click_row("lstv_timing", 12);
    h.click("cmd_run");
    h.click_row("lstv_timing", 3);
    h.click("cmd_refresh");
    EXPECT_TRUE(h.text("lab_timing").startsWith("[12]"));
    EXPECT_TRUE(h.text("lab_pattern").startsWith("[01]"));
    EXPECT_EQ(h.find<QTreeWidget>("lstv_timing").currentIndex().row(), 11);
    // the figures are those of the row that was looked at, until the list's next event
    EXPECT_EQ(h.text("txt_htotal_pix"), QString::fromStdString(desk().catalogue.lstv_timing_sub.text(3)));
    EXPECT_TRUE(h.find("cmd_refresh").isEnabled());
}

TEST_F(signal_end_to_end, a_dead_step_of_a_refresh_is_told_in_its_label_and_ends_it) {
    const hand h = operator_hand();
    generator->tell("refuse OUT999 none");
    h.click("cmd_refresh");
    EXPECT_TRUE(h.text("lab_timing").startsWith("[01]"));
    EXPECT_TRUE(h.text("lab_pattern").startsWith("[01]"));
    EXPECT_EQ(h.text("lab_out"), "Link Error");
    EXPECT_EQ(h.text("lab_hdcp"), "");
    EXPECT_EQ(generator->commands(), (QStringList{"TIM999", "PAT999", "OUT999", "OUT999"}));
}

TEST_F(signal_end_to_end, favorite_timings_go_up_and_come_back_from_a_generator_that_thinks_for_100_ms) {
    const hand h = operator_hand();
    h.click("cmd_fav_timing");
    h.click_check("lstv_timing", 2);
    h.click_check("lstv_timing", 79);
    h.click("cmd_run");
    QStringList expected;
    for (int i = 1; i <= 79; ++i)
        expected.append(QString("FT%1%2").arg(QChar(i == 2 || i == 79 ? '+' : '-')).arg(i, 3, 10, QChar('0')));
    EXPECT_EQ(generator->commands(), expected);

    h.click("cmd_check_none");
    EXPECT_TRUE(checked_rows("lstv_timing").isEmpty());
    generator->tell("think 100");
    h.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"FT+999"}) << "one try does";
    EXPECT_EQ(checked_rows("lstv_timing"), (QList<int>{2, 79}));
}

TEST_F(signal_end_to_end, favorite_patterns_go_up_and_come_back_from_a_generator_that_thinks_for_100_ms) {
    const hand h = operator_hand();
    h.click("cmd_fav_pattern");
    h.click("cmd_check_all");
    h.click_check("lstv_pattern", 5);
    h.click("cmd_run");
    const QStringList sent = generator->commands();
    EXPECT_EQ(sent.size(), 64);
    EXPECT_EQ(sent.filter("FP-"), QStringList{"FP-005"});

    h.click("cmd_check_none");
    generator->tell("think 100");
    h.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"FP+999"});
    EXPECT_EQ(checked_rows("lstv_pattern").size(), 63);
    EXPECT_FALSE(checked_rows("lstv_pattern").contains(5));
}

TEST_F(signal_end_to_end, no_favorite_timing_at_all_becomes_rows_1_and_23) {
    const hand h = operator_hand();
    h.click("cmd_fav_timing");
    h.click("cmd_run");
    EXPECT_EQ(generator->commands().mid(78), (QStringList{"FT-079", "FT+001", "FT+023"}));
    EXPECT_EQ(checked_rows("lstv_timing"), (QList<int>{1, 23}));
    EXPECT_EQ(h.find<QTreeWidget>("lstv_timing").currentIndex().row(), 22);
}

TEST_F(signal_end_to_end, a_favorite_walk_that_fails_tells_it_once) {
    const hand h = operator_hand();
    h.click("cmd_fav_timing");
    generator->tell("refuse FT-003 none");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    h.click("cmd_run");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Link Error !");
    EXPECT_EQ(generator->commands(), (QStringList{"FT-001", "FT-002", "FT-003", "FT-003"}));
    EXPECT_TRUE(h.find("cmd_download").isEnabled());
    EXPECT_TRUE(h.find("cmd_run").isEnabled());
}

TEST_F(signal_end_to_end, the_autorun_list_goes_up_and_comes_back_from_a_generator_that_thinks_for_100_ms) {
    const hand h = operator_hand();
    h.click("cmd_auto");
    h.click_row("lstv_auto", 3);
    h.choose("cbo_timing", 11);
    h.choose("cbo_pattern", 6);
    h.choose("cbo_interval", 30);
    h.click("cmd_replace");
    EXPECT_TRUE(cell("lstv_auto", 3, 1).startsWith("[12]"));
    h.click_row("lstv_auto", 32);
    h.click("cmd_replace");
    bool both_dead = false;
    h.when(heard("ATN001"), [&] { both_dead = !h.find("cmd_run").isEnabled() && !h.find("cmd_download").isEnabled(); });
    h.click("cmd_run");
    EXPECT_TRUE(both_dead);
    const QStringList sent = generator->commands();
    ASSERT_EQ(sent.size(), 128);
    EXPECT_EQ(sent.mid(0, 12), (QStringList{"ATN001", "ATT001", "ATP001", "ATI000", "ATN002", "ATT001", "ATP001",
                                            "ATI000", "ATN003", "ATT012", "ATP007", "ATI600"}));
    EXPECT_EQ(sent.last(4), (QStringList{"ATN032", "ATT012", "ATP007", "ATI600"}));

    h.click("cmd_delete");
    EXPECT_EQ(cell("lstv_auto", 32, 3), "0");
    generator->tell("think 100");
    h.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"ATS999"}) << "one try does";
    EXPECT_EQ(h.find<QTreeWidget>("lstv_auto").topLevelItemCount(), 32);
    for (const int row : {3, 32}) {
        EXPECT_TRUE(cell("lstv_auto", row, 1).startsWith("[12]")) << row;
        EXPECT_TRUE(cell("lstv_auto", row, 2).startsWith("[07]")) << row;
        EXPECT_EQ(cell("lstv_auto", row, 3), "600") << row;
    }
    EXPECT_EQ(cell("lstv_auto", 4, 1), "");
    EXPECT_EQ(cell("lstv_auto", 4, 3), "0");
}

TEST_F(signal_end_to_end, a_double_click_loads_a_step_into_the_editing_fields) {
    const hand h = operator_hand();
    h.click("cmd_auto");
    h.choose("cbo_timing", 4);
    h.choose("cbo_interval", 2);
    h.click("cmd_replace");
    h.choose("cbo_timing", 0);
    h.choose("cbo_interval", 0);
    h.double_click_row("lstv_auto", 2);
    EXPECT_TRUE(h.text("cbo_timing").startsWith("[01]")) << "an unused row changes nothing";
    h.double_click_row("lstv_auto", 1);
    EXPECT_TRUE(h.text("cbo_timing").startsWith("[05]"));
    EXPECT_EQ(h.text("cbo_interval"), "15");
}

TEST_F(signal_end_to_end, a_short_answer_fails_the_whole_download) {
    const hand h = operator_hand();
    h.click("cmd_auto");
    h.click("cmd_replace");
    generator->tell("short 1 2");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    h.click("cmd_download");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Link Error !");
    EXPECT_EQ(generator->commands(), (QStringList{"ATS999", "ATS999"}));
    EXPECT_EQ(cell("lstv_auto", 1, 3), "5");
}

TEST_F(signal_end_to_end, the_custom_string_goes_up_and_comes_back) {
    const hand h = operator_hand();
    h.click("cmd_pattern");
    h.click_row("lstv_pattern", 41);
    h.type("txt_motion_str", "  HELLO ");
    h.click("cmd_upload");
    EXPECT_EQ(h.text("txt_motion_str"), "HELLO");
    EXPECT_EQ(generator->commands_up_to("hex:48454C4C4F00000000000000"),
              (QStringList{"MOT001", "hex:48454C4C4F00000000000000"}));
    h.type("txt_motion_str", "other");
    h.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"MOT999"});
    EXPECT_EQ(h.text("txt_motion_str"), "HELLO");
}

TEST_F(signal_end_to_end, upload_that_fails_stays_red_and_dead) {
    const hand h = operator_hand();
    h.click("cmd_pattern");
    h.click_row("lstv_pattern", 41);
    generator->tell("refuse MOT001 none");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    h.click("cmd_upload");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Link Error");
    h.click("cmd_timing");
    h.click("cmd_pattern");
    EXPECT_TRUE(h.is_shown("cmd_upload"));
    EXPECT_FALSE(h.find("cmd_upload").isEnabled());
    EXPECT_EQ(back_of(h.find("cmd_upload")), red);
}

TEST_F(signal_end_to_end, the_colour_settings_are_read_and_changed) {
    const hand h = operator_hand();
    choose_color_pattern();
    EXPECT_FALSE(bar(0).isEnabled());
    EXPECT_EQ(h.text("lab_color_setting_0"), "?");
    h.click("cmd_download");
    EXPECT_EQ(generator->commands(), (QStringList{"CSC999", "CRR999", "CRG999", "CRB999"}));
    EXPECT_EQ(h.text("lab_color_setting_0"), "Red");
    EXPECT_TRUE(bar(0).isEnabled());

    // the large step of the slider's own keys
    bar(0).setValue(100);
    h.press_key("hsr_color_setting_0", Qt::Key_PageUp);
    EXPECT_EQ(h.text("txt_color_setting_0"), "120");
    EXPECT_EQ(generator->commands_up_to("CRR120"), (QStringList{"CRR100", "CRR120"}));

    h.type("txt_color_setting_1", "7");
    h.press_key("txt_color_setting_1", Qt::Key_Return);
    EXPECT_EQ(bar(1).value(), 7);
    EXPECT_EQ(generator->commands_up_to("CRG007"), QStringList{"CRG007"});
    EXPECT_EQ(h.find<QLineEdit>("txt_color_setting_1").selectedText(), "7");

    h.type("txt_color_setting_3", "200");
    h.press_key("txt_color_setting_3", Qt::Key_Enter);
    for (const int i : {0, 1, 2, 3})
        EXPECT_EQ(h.text(member("txt_color_setting", i)), "200") << i;
    EXPECT_EQ(bar(0).value(), 120);
    EXPECT_EQ(generator->commands_up_to("CRY200"), QStringList{"CRY200"});
}

TEST_F(signal_end_to_end, a_value_that_is_none_is_marked_for_retyping_and_not_sent) {
    const hand h = operator_hand();
    choose_color_pattern();
    h.click("cmd_download");
    generator->traffic();
    for (const char* text : {"256", "-1", "1.5", "x", "   "}) {
        h.type("txt_color_setting_0", text);
        h.press_key("txt_color_setting_0", Qt::Key_Return);
        EXPECT_EQ(h.text("txt_color_setting_0"), text);
        EXPECT_EQ(h.find<QLineEdit>("txt_color_setting_0").selectedText(), text);
    }
    h.type("txt_color_setting_0", "255");
    h.press_key("txt_color_setting_0", Qt::Key_Return);
    EXPECT_EQ(generator->commands_up_to("CRR255"), QStringList{"CRR255"});
}

TEST_F(signal_end_to_end, a_click_into_a_colour_box_selects_its_text) {
    const hand h = operator_hand();
    choose_color_pattern();
    h.click("cmd_download");
    h.type("txt_color_setting_0", "123");
    h.click("txt_color_setting_1");
    h.click("txt_color_setting_0");
    EXPECT_EQ(h.find<QLineEdit>("txt_color_setting_0").selectedText(), "123");
}

TEST_F(signal_end_to_end, a_drag_streams_every_value_in_order_and_the_last_one_again_when_it_is_let_go) {
    const hand h = operator_hand();
    choose_color_pattern();
    h.click("cmd_download");
    bar(0).setValue(0);
    generator->commands_up_to("CRR000");
    bar(0).setSliderDown(true);
    QStringList expected;
    for (int v = 1; v <= 255; ++v) {
        bar(0).setSliderPosition(v);
        expected.append(QString("CRR%1").arg(v, 3, 10, QChar('0')));
    }
    EXPECT_EQ(h.text("txt_color_setting_0"), "255");
    bar(0).setSliderDown(false);
    expected.append("CRR255");
    QStringList sent = generator->commands_up_to("CRR255");
    while (sent.size() < expected.size())
        sent += generator->commands_up_to("CRR255");
    EXPECT_EQ(sent, expected);
}

TEST_F(signal_end_to_end, grey_in_colour_differences_has_both_of_them_at_128) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    h.click("cmd_csc_1");
    choose_color_pattern();
    h.click("cmd_download");
    EXPECT_EQ(h.text("lab_color_setting_0"), "Cr");
    EXPECT_EQ(h.text("lab_color_setting_1"), "Y");
    EXPECT_EQ(h.text("lab_color_setting_2"), "Cb");
    EXPECT_EQ(h.text("lab_color_setting_3"), "Grey");
    bar(3).setValue(200);
    EXPECT_EQ(h.text("txt_color_setting_0"), "128");
    EXPECT_EQ(h.text("txt_color_setting_1"), "200");
    EXPECT_EQ(h.text("txt_color_setting_2"), "128");
    EXPECT_EQ(h.text("txt_color_setting_3"), "200");
    EXPECT_EQ(generator->commands_up_to("CRY200").last(1), QStringList{"CRY200"});
}

TEST_F(signal_end_to_end, a_generator_without_colour_values_leaves_the_controls_dead) {
    const hand h = operator_hand();
    generator->tell("refuse CRR999 CRR300");
    choose_color_pattern();
    h.click("cmd_download");
    EXPECT_EQ(h.text("lab_color_setting_0"), "Red");
    for (const int i : {0, 1, 2, 3}) {
        EXPECT_FALSE(bar(i).isEnabled()) << i;
        EXPECT_FALSE(h.find(member("txt_color_setting", i)).isEnabled()) << i;
    }
}

} // namespace

} // namespace desk::gui
