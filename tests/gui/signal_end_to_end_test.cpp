// The signal side through the real window, with a generator on a pseudo terminal: panel, favorites, autorun list,
// custom string and colour settings.

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

    /// Index of the lit button of a panel group; -1: none, -2: several.
    int lit(const QString& group, int count) {
        int found = -1;
        for (int i = 0; i < count; ++i) {
            if (back_of(driver().find(member(group, i))) != green) continue;
            found = found == -1 ? i : -2;
        }
        return found;
    }
    static QString member(const QString& group, int index) { return group + "_" + QString::number(index); }

    QList<int> checked_rows(const QString& list) {
        QList<int> rows;
        const auto& tree = driver().find<QTreeWidget>(list);
        for (int i = 0; i < tree.topLevelItemCount(); ++i) {
            if (tree.topLevelItem(i)->checkState(0) == Qt::Checked) rows.append(i + 1);
        }
        return rows;
    }
    QString cell(const QString& list, int row, int column) {
        return driver().find<QTreeWidget>(list).topLevelItem(row - 1)->text(column);
    }
    void choose_color_pattern() {
        driver().click("cmd_pattern");
        driver().click_row("lstv_pattern", 13);
    }
    QScrollBar& bar(int index) { return driver().find<QScrollBar>(member("hsr_color_setting", index)); }
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

TEST_F(signal_end_to_end, every_panel_switch_acts_at_once_and_lights_up) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    for (const panel_group& group : panel_groups) {
        for (int i = 0; i < group.count; ++i) {
            ui.click(member(group.name, i));
            const QString command = QString("%1%2").arg(group.letters).arg(group.first_argument + i, 3, 10, QChar('0'));
            EXPECT_EQ(generator->commands().value(0), command);
            EXPECT_EQ(lit(group.name, group.count), i) << group.name;
        }
    }
    EXPECT_EQ(ui.text("lab_out"), "HDMI");
    EXPECT_EQ(ui.text("lab_hdcp"), "ON");
}

TEST_F(signal_end_to_end, the_channels_follow_the_audio_source) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    ui.click("cmd_asc_0");
    for (int i = 0; i < 3; ++i) {
        ui.click(member("cmd_lpcm", i));
        EXPECT_EQ(lit("cmd_lpcm", 3), i);
    }
    // the built-in sine has two channels and refuses more
    ui.click("cmd_asc_2");
    EXPECT_EQ(generator->commands().last(2), (QStringList{"ASC003", "PCM999"}));
    EXPECT_EQ(lit("cmd_lpcm", 3), 0);
    ui.click("cmd_lpcm_2");
    EXPECT_EQ(generator->traffic(), (QStringList{"> PCM003", "< PCM100"}));
    EXPECT_EQ(lit("cmd_lpcm", 3), -1);
}

TEST_F(signal_end_to_end, a_pressed_switch_is_red_and_disabled_until_the_answer) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    generator->command("delay 600");
    bool red_and_dead = false;
    ui.when(heard("DEE002"), [&] {
        red_and_dead = back_of(ui.find("cmd_deep_1")) == red && !ui.find("cmd_deep_1").isEnabled();
        ui.click("cmd_deep_1");
    });
    ui.click("cmd_deep_1");
    EXPECT_TRUE(red_and_dead);
    EXPECT_EQ(generator->commands(), QStringList{"DEE002"});
    EXPECT_EQ(lit("cmd_deep", 3), 1);
    EXPECT_TRUE(ui.find("cmd_deep_1").isEnabled());
}

TEST_F(signal_end_to_end, a_second_switch_interrupts_an_exchange) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    generator->command("drop 1");
    ui.when(heard("DEE002"), [&] { ui.click("cmd_csc_2"); });
    ui.click("cmd_deep_1");
    // the inner exchange gives the outer one its own answer, with the wrong letters
    EXPECT_EQ(generator->commands(), (QStringList{"DEE002", "CSC003", "DEE002"}));
    EXPECT_EQ(lit("cmd_csc", 3), 2);
    EXPECT_EQ(lit("cmd_deep", 3), 1);
}

TEST_F(signal_end_to_end, reset_clears_the_panel_and_download_lights_it_again) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    for (const char* press : {"cmd_out_2", "cmd_hdcp_1", "cmd_csc_1", "cmd_deep_2", "cmd_auto_go_1", "cmd_fav_1"})
        ui.click(press);
    ui.click("cmd_reset");
    for (const panel_group& group : panel_groups)
        EXPECT_EQ(lit(group.name, group.count), -1) << group.name;
    for (const char* label : {"lab_timing", "lab_pattern", "lab_out", "lab_hdcp"})
        EXPECT_EQ(ui.text(label), "") << label;
    generator->traffic();

    ui.click("cmd_download");
    EXPECT_EQ(generator->commands(), (QStringList{"TIM999", "PAT999", "OUT999", "HDC999", "ASC999", "PCM999", "CSC999",
                                                  "DEE999", "ATO999", "FAV999"}));
    for (const panel_group& group : panel_groups)
        EXPECT_GE(lit(group.name, group.count), 0) << group.name;
    EXPECT_GE(lit("cmd_lpcm", 3), 0);
    EXPECT_TRUE(ui.text("lab_timing").startsWith("[01]"));
}

TEST_F(signal_end_to_end, refresh_shows_what_the_generator_outputs) {
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    ui.click_row("lstv_timing", 12);
    ui.click("cmd_run");
    ui.click_row("lstv_timing", 3);
    ui.click("cmd_refresh");
    EXPECT_TRUE(ui.text("lab_timing").startsWith("[12]"));
    EXPECT_TRUE(ui.text("lab_pattern").startsWith("[01]"));
    EXPECT_EQ(ui.find<QTreeWidget>("lstv_timing").currentIndex().row(), 11);
    // the figures stay those of the previous row until the list's next event
    EXPECT_EQ(ui.text("txt_htotal_pix"), QString::fromStdString(desk().catalogue.lstv_timing_sub.text(3)));
    EXPECT_TRUE(ui.find("cmd_refresh").isEnabled());
}

TEST_F(signal_end_to_end, a_failed_step_of_a_refresh_shows_in_its_label_and_ends_it) {
    const ui_driver ui = driver();
    generator->command("refuse OUT999 none");
    ui.click("cmd_refresh");
    EXPECT_TRUE(ui.text("lab_timing").startsWith("[01]"));
    EXPECT_TRUE(ui.text("lab_pattern").startsWith("[01]"));
    EXPECT_EQ(ui.text("lab_out"), "Link Error");
    EXPECT_EQ(ui.text("lab_hdcp"), "");
    EXPECT_EQ(generator->commands(), (QStringList{"TIM999", "PAT999", "OUT999", "OUT999"}));
}

TEST_F(signal_end_to_end, favorite_timings_are_sent_and_read_back_with_answers_after_100_ms) {
    const ui_driver ui = driver();
    ui.click("cmd_fav_timing");
    ui.click_check("lstv_timing", 2);
    ui.click_check("lstv_timing", 79);
    ui.click("cmd_run");
    QStringList expected;
    for (int i = 1; i <= 79; ++i)
        expected.append(QString("FT%1%2").arg(QChar(i == 2 || i == 79 ? '+' : '-')).arg(i, 3, 10, QChar('0')));
    EXPECT_EQ(generator->commands(), expected);

    ui.click("cmd_check_none");
    EXPECT_TRUE(checked_rows("lstv_timing").isEmpty());
    generator->command("think 100");
    ui.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"FT+999"}) << "a single try is enough";
    EXPECT_EQ(checked_rows("lstv_timing"), (QList<int>{2, 79}));
}

TEST_F(signal_end_to_end, favorite_patterns_are_sent_and_read_back_with_answers_after_100_ms) {
    const ui_driver ui = driver();
    ui.click("cmd_fav_pattern");
    ui.click("cmd_check_all");
    ui.click_check("lstv_pattern", 5);
    ui.click("cmd_run");
    const QStringList sent = generator->commands();
    EXPECT_EQ(sent.size(), 64);
    EXPECT_EQ(sent.filter("FP-"), QStringList{"FP-005"});

    ui.click("cmd_check_none");
    generator->command("think 100");
    ui.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"FP+999"});
    EXPECT_EQ(checked_rows("lstv_pattern").size(), 63);
    EXPECT_FALSE(checked_rows("lstv_pattern").contains(5));
}

TEST_F(signal_end_to_end, no_favorite_timing_becomes_rows_1_and_23) {
    const ui_driver ui = driver();
    ui.click("cmd_fav_timing");
    ui.click("cmd_run");
    EXPECT_EQ(generator->commands().mid(78), (QStringList{"FT-079", "FT+001", "FT+023"}));
    EXPECT_EQ(checked_rows("lstv_timing"), (QList<int>{1, 23}));
    EXPECT_EQ(ui.find<QTreeWidget>("lstv_timing").currentIndex().row(), 22);
}

TEST_F(signal_end_to_end, a_failed_favorite_walk_is_reported_once) {
    const ui_driver ui = driver();
    ui.click("cmd_fav_timing");
    generator->command("refuse FT-003 none");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    ui.click("cmd_run");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Link Error !");
    EXPECT_EQ(generator->commands(), (QStringList{"FT-001", "FT-002", "FT-003", "FT-003"}));
    EXPECT_TRUE(ui.find("cmd_download").isEnabled());
    EXPECT_TRUE(ui.find("cmd_run").isEnabled());
}

TEST_F(signal_end_to_end, the_autorun_list_is_sent_and_read_back_with_answers_after_100_ms) {
    const ui_driver ui = driver();
    ui.click("cmd_auto");
    ui.click_row("lstv_auto", 3);
    ui.choose("cbo_timing", 11);
    ui.choose("cbo_pattern", 6);
    ui.choose("cbo_interval", 30);
    ui.click("cmd_replace");
    EXPECT_TRUE(cell("lstv_auto", 3, 1).startsWith("[12]"));
    ui.click_row("lstv_auto", 32);
    ui.click("cmd_replace");
    bool both_dead = false;
    ui.when(heard("ATN001"),
            [&] { both_dead = !ui.find("cmd_run").isEnabled() && !ui.find("cmd_download").isEnabled(); });
    ui.click("cmd_run");
    EXPECT_TRUE(both_dead);
    const QStringList sent = generator->commands();
    ASSERT_EQ(sent.size(), 128);
    EXPECT_EQ(sent.mid(0, 12), (QStringList{"ATN001", "ATT001", "ATP001", "ATI000", "ATN002", "ATT001", "ATP001",
                                            "ATI000", "ATN003", "ATT012", "ATP007", "ATI600"}));
    EXPECT_EQ(sent.last(4), (QStringList{"ATN032", "ATT012", "ATP007", "ATI600"}));

    ui.click("cmd_delete");
    EXPECT_EQ(cell("lstv_auto", 32, 3), "0");
    generator->command("think 100");
    ui.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"ATS999"}) << "a single try is enough";
    EXPECT_EQ(ui.find<QTreeWidget>("lstv_auto").topLevelItemCount(), 32);
    for (const int row : {3, 32}) {
        EXPECT_TRUE(cell("lstv_auto", row, 1).startsWith("[12]")) << row;
        EXPECT_TRUE(cell("lstv_auto", row, 2).startsWith("[07]")) << row;
        EXPECT_EQ(cell("lstv_auto", row, 3), "600") << row;
    }
    EXPECT_EQ(cell("lstv_auto", 4, 1), "");
    EXPECT_EQ(cell("lstv_auto", 4, 3), "0");
}

TEST_F(signal_end_to_end, a_double_click_loads_a_step_into_the_editing_fields) {
    const ui_driver ui = driver();
    ui.click("cmd_auto");
    ui.choose("cbo_timing", 4);
    ui.choose("cbo_interval", 2);
    ui.click("cmd_replace");
    ui.choose("cbo_timing", 0);
    ui.choose("cbo_interval", 0);
    ui.double_click_row("lstv_auto", 2);
    EXPECT_TRUE(ui.text("cbo_timing").startsWith("[01]")) << "an unused row changes nothing";
    ui.double_click_row("lstv_auto", 1);
    EXPECT_TRUE(ui.text("cbo_timing").startsWith("[05]"));
    EXPECT_EQ(ui.text("cbo_interval"), "15");
}

TEST_F(signal_end_to_end, a_short_answer_fails_the_whole_download) {
    const ui_driver ui = driver();
    ui.click("cmd_auto");
    ui.click("cmd_replace");
    generator->command("short 1 2");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    ui.click("cmd_download");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Link Error !");
    EXPECT_EQ(generator->commands(), (QStringList{"ATS999", "ATS999"}));
    EXPECT_EQ(cell("lstv_auto", 1, 3), "5");
}

TEST_F(signal_end_to_end, the_custom_string_is_sent_and_read_back) {
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 41);
    ui.type("txt_motion_str", "  HELLO ");
    ui.click("cmd_upload");
    EXPECT_EQ(ui.text("txt_motion_str"), "HELLO");
    EXPECT_EQ(generator->commands_up_to("hex:48454C4C4F00000000000000"),
              (QStringList{"MOT001", "hex:48454C4C4F00000000000000"}));
    ui.type("txt_motion_str", "other");
    ui.click("cmd_download");
    EXPECT_EQ(generator->commands(), QStringList{"MOT999"});
    EXPECT_EQ(ui.text("txt_motion_str"), "HELLO");
}

TEST_F(signal_end_to_end, a_failed_upload_stays_red_and_disabled) {
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 41);
    generator->command("refuse MOT001 none");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    ui.click("cmd_upload");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Link Error");
    ui.click("cmd_timing");
    ui.click("cmd_pattern");
    EXPECT_TRUE(ui.is_shown("cmd_upload"));
    EXPECT_FALSE(ui.find("cmd_upload").isEnabled());
    EXPECT_EQ(back_of(ui.find("cmd_upload")), red);
}

TEST_F(signal_end_to_end, the_colour_settings_are_read_and_changed) {
    const ui_driver ui = driver();
    choose_color_pattern();
    EXPECT_FALSE(bar(0).isEnabled());
    EXPECT_EQ(ui.text("lab_color_setting_0"), "?");
    ui.click("cmd_download");
    EXPECT_EQ(generator->commands(), (QStringList{"CSC999", "CRR999", "CRG999", "CRB999"}));
    EXPECT_EQ(ui.text("lab_color_setting_0"), "Red");
    EXPECT_TRUE(bar(0).isEnabled());

    // the large step of the slider's own keys
    bar(0).setValue(100);
    ui.press_key("hsr_color_setting_0", Qt::Key_PageUp);
    EXPECT_EQ(ui.text("txt_color_setting_0"), "120");
    EXPECT_EQ(generator->commands_up_to("CRR120"), (QStringList{"CRR100", "CRR120"}));

    ui.type("txt_color_setting_1", "7");
    ui.press_key("txt_color_setting_1", Qt::Key_Return);
    EXPECT_EQ(bar(1).value(), 7);
    EXPECT_EQ(generator->commands_up_to("CRG007"), QStringList{"CRG007"});
    EXPECT_EQ(ui.find<QLineEdit>("txt_color_setting_1").selectedText(), "7");

    ui.type("txt_color_setting_3", "200");
    ui.press_key("txt_color_setting_3", Qt::Key_Enter);
    for (const int i : {0, 1, 2, 3})
        EXPECT_EQ(ui.text(member("txt_color_setting", i)), "200") << i;
    EXPECT_EQ(bar(0).value(), 120);
    EXPECT_EQ(generator->commands_up_to("CRY200"), QStringList{"CRY200"});
}

TEST_F(signal_end_to_end, an_invalid_value_is_selected_for_retyping_and_not_sent) {
    const ui_driver ui = driver();
    choose_color_pattern();
    ui.click("cmd_download");
    generator->traffic();
    for (const char* text : {"256", "-1", "1.5", "x", "   "}) {
        ui.type("txt_color_setting_0", text);
        ui.press_key("txt_color_setting_0", Qt::Key_Return);
        EXPECT_EQ(ui.text("txt_color_setting_0"), text);
        EXPECT_EQ(ui.find<QLineEdit>("txt_color_setting_0").selectedText(), text);
    }
    ui.type("txt_color_setting_0", "255");
    ui.press_key("txt_color_setting_0", Qt::Key_Return);
    EXPECT_EQ(generator->commands_up_to("CRR255"), QStringList{"CRR255"});
}

TEST_F(signal_end_to_end, a_click_into_a_colour_box_selects_its_text) {
    const ui_driver ui = driver();
    choose_color_pattern();
    ui.click("cmd_download");
    ui.type("txt_color_setting_0", "123");
    ui.click("txt_color_setting_1");
    ui.click("txt_color_setting_0");
    EXPECT_EQ(ui.find<QLineEdit>("txt_color_setting_0").selectedText(), "123");
}

TEST_F(signal_end_to_end, a_drag_sends_every_value_in_order_and_repeats_the_last_on_release) {
    const ui_driver ui = driver();
    choose_color_pattern();
    ui.click("cmd_download");
    bar(0).setValue(0);
    generator->commands_up_to("CRR000");
    bar(0).setSliderDown(true);
    QStringList expected;
    for (int v = 1; v <= 255; ++v) {
        bar(0).setSliderPosition(v);
        expected.append(QString("CRR%1").arg(v, 3, 10, QChar('0')));
    }
    EXPECT_EQ(ui.text("txt_color_setting_0"), "255");
    bar(0).setSliderDown(false);
    expected.append("CRR255");
    QStringList sent = generator->commands_up_to("CRR255");
    while (sent.size() < expected.size())
        sent += generator->commands_up_to("CRR255");
    EXPECT_EQ(sent, expected);
}

TEST_F(signal_end_to_end, grey_sets_both_colour_differences_to_128) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    ui.click("cmd_csc_1");
    choose_color_pattern();
    ui.click("cmd_download");
    EXPECT_EQ(ui.text("lab_color_setting_0"), "Cr");
    EXPECT_EQ(ui.text("lab_color_setting_1"), "Y");
    EXPECT_EQ(ui.text("lab_color_setting_2"), "Cb");
    EXPECT_EQ(ui.text("lab_color_setting_3"), "Grey");
    bar(3).setValue(200);
    EXPECT_EQ(ui.text("txt_color_setting_0"), "128");
    EXPECT_EQ(ui.text("txt_color_setting_1"), "200");
    EXPECT_EQ(ui.text("txt_color_setting_2"), "128");
    EXPECT_EQ(ui.text("txt_color_setting_3"), "200");
    EXPECT_EQ(generator->commands_up_to("CRY200").last(1), QStringList{"CRY200"});
}

TEST_F(signal_end_to_end, a_generator_without_colour_values_leaves_the_controls_disabled) {
    const ui_driver ui = driver();
    generator->command("refuse CRR999 CRR300");
    choose_color_pattern();
    ui.click("cmd_download");
    EXPECT_EQ(ui.text("lab_color_setting_0"), "Red");
    for (const int i : {0, 1, 2, 3}) {
        EXPECT_FALSE(bar(i).isEnabled()) << i;
        EXPECT_FALSE(ui.find(member("txt_color_setting", i)).isEnabled()) << i;
    }
}

} // namespace

} // namespace desk::gui
