// The desk by keyboard alone: every control is reached, in reading order.

#include "bench_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QKeySequence>
#include <QTest>

#include <algorithm>
#include <vector>

namespace desk::gui {

namespace {

const QStringList above_and_beside = {"cbo_com",    "cmd_conn",    "cmd_disconn",    "cmd_about",
                                      "cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern",
                                      "cmd_edid",   "cmd_auto",    "cmd_setup",      "cmd_refresh"};

class keyboard : public bench {
protected:
    keyboard() { plug_generator(); }

    /// The tab stops, from the port list once around.
    QStringList walk(Qt::Key key = Qt::Key_Tab) {
        driver().find("cbo_com").setFocus();
        QStringList order;
        do {
            order << QApplication::focusWidget()->objectName();
            press(key);
        } while (QApplication::focusWidget()->objectName() != "cbo_com" && order.size() < 200);
        return order;
    }

    /// The same without the controls common to all views, in one line.
    std::string walk_view() {
        QStringList order = walk();
        EXPECT_EQ(order.mid(0, above_and_beside.size()), above_and_beside);
        return line(order.mid(above_and_beside.size()));
    }

    static std::string line(const QStringList& names) { return names.join(' ').toStdString(); }
    static std::string focused() { return QApplication::focusWidget()->objectName().toStdString(); }

    /// A new window gets the focus a little later.
    static bool gets_focus(const QWidget& w) {
        return wait_until(
            [&] { return QApplication::focusWidget() != nullptr && QApplication::focusWidget()->window() == &w; },
            20000);
    }

    /// Releases the key over the widget that is focused by then.
    static void press(Qt::Key key) {
        QTest::keyPress(QApplication::focusWidget(), key);
        if (QApplication::focusWidget() != nullptr) QTest::keyRelease(QApplication::focusWidget(), key);
    }
};

struct view_order {
    const char* button;
    QStringList order;
};

const std::vector<view_order> view_orders = {
    {"cmd_timing",
     {"lstv_timing",    "cmd_run",         "txt_pix_f",     "txt_htotal_pix",   "txt_htotal_us",  "txt_hactive_pix",
      "txt_hactive_us", "txt_hdelay_pix",  "txt_hdelay_us", "txt_hsw_pix",      "txt_hsw_us",     "txt_hpol",
      "txt_hf",         "txt_vtotal_line", "txt_vtotal_ms", "txt_vactive_line", "txt_vactive_ms", "txt_vdelay_line",
      "txt_vdelay_ms",  "txt_vsw_line",    "txt_vsw_ms",    "txt_vpol",         "txt_vf"}},
    {"cmd_pattern", {"lstv_pattern", "cmd_run"}},
    {"cmd_fav_timing", {"lstv_timing", "cmd_download", "cmd_run", "cmd_check_all", "cmd_check_none"}},
    {"cmd_fav_pattern", {"lstv_pattern", "cmd_download", "cmd_run", "cmd_check_all", "cmd_check_none"}},
    {"cmd_edid",
     {"opt_edid_src_1", "txt_write", "cmd_load", "cmd_pre_f", "cmd_clear_file", "cmd_save_write", "cmd_erase",
      "txt_read", "cmd_read", "cmd_compare", "cmd_clear_read", "cmd_save_read"}},
    {"cmd_auto",
     {"cmd_download", "cmd_run", "lstv_auto", "cbo_timing", "cbo_pattern", "cbo_interval", "cmd_replace",
      "cmd_delete"}},
    {"cmd_setup", {"cmd_download", "cmd_out_0",     "cmd_out_1",     "cmd_out_2", "cmd_out_3",  "cmd_hdcp_0",
                   "cmd_hdcp_1",   "cmd_asc_0",     "cmd_asc_1",     "cmd_asc_2", "cmd_lpcm_0", "cmd_lpcm_1",
                   "cmd_lpcm_2",   "cmd_csc_0",     "cmd_csc_1",     "cmd_csc_2", "cmd_deep_0", "cmd_deep_1",
                   "cmd_deep_2",   "cmd_auto_go_0", "cmd_auto_go_1", "cmd_fav_0", "cmd_fav_1",  "cmd_reset"}},
};

TEST_F(keyboard, reaches_every_control_of_a_view_in_reading_order) {
    start();
    for (const view_order& v : view_orders) {
        driver().click(v.button);
        EXPECT_EQ(walk_view(), line(v.order)) << v.button;
    }
}

TEST_F(keyboard, walks_backwards_in_the_same_order) {
    start();
    driver().click("cmd_fav_timing");
    QStringList order = walk();
    const QStringList back = walk(Qt::Key_Backtab);
    order.append(order.takeFirst());
    std::reverse(order.begin(), order.end());
    EXPECT_EQ(line(back), line(order));
}

TEST_F(keyboard, reaches_the_color_values_and_the_custom_string) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 13);
    ui.click("cmd_download");
    // releasing a key over the list would clear the values
    ui.find("cmd_download").setFocus();
    QStringList order;
    for (int i = 0; i < 9; ++i) {
        press(Qt::Key_Tab);
        order << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(line(order), "cmd_run hsr_color_setting_0 txt_color_setting_0 hsr_color_setting_1 txt_color_setting_1 "
                           "hsr_color_setting_2 txt_color_setting_2 hsr_color_setting_3 txt_color_setting_3");
    ui.click_row("lstv_pattern", 41);
    EXPECT_EQ(walk_view(), "lstv_pattern cmd_download cmd_run txt_motion_str cmd_upload");
}

TEST_F(keyboard, skips_controls_covered_by_the_translation) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    ui.click("cmd_read_translate");
    EXPECT_EQ(walk_view(), "cmd_edid_report cmd_edid_back tree_edid txt_edid");
}

TEST_F(keyboard, continues_at_the_same_place_after_a_frame_closes) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    ui.click("cmd_about");
    ui.find("cbo_com").setFocus();
    while (QApplication::focusWidget()->objectName() != "cmd_about_ok")
        press(Qt::Key_Tab);
    press(Qt::Key_Space);
    ASSERT_FALSE(ui.is_shown("fra_about"));
    EXPECT_EQ(focused(), "cmd_about");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "cmd_timing");
}

TEST_F(keyboard, cycles_through_option_buttons_with_the_arrow_keys) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.find("opt_edid_src_1").setFocus();
    press(Qt::Key_Right);
    EXPECT_TRUE(ui.find("opt_edid_src_2").hasFocus());
    EXPECT_TRUE(desk().workbench.opt_edid_src[1].value);
    EXPECT_EQ(desk().shared_fields.edid_src, 2);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_TRUE(ui.find("opt_edid_src_3").hasFocus());
    EXPECT_EQ(desk().shared_fields.edid_src, 3);
    press(Qt::Key_Down);
    EXPECT_EQ(desk().shared_fields.edid_src, 1);
    press(Qt::Key_Tab);
    EXPECT_TRUE(ui.find("txt_write").hasFocus());
}

TEST_F(keyboard, ticks_the_rows_of_a_list) {
    start();
    driver().click("cmd_fav_timing");
    driver().find("lstv_timing").setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    const list_view& rows = desk().catalogue.lstv_timing;
    for (int i = 1; i <= rows.row_count(); ++i)
        EXPECT_EQ(rows.row(i).checked, i == 2 || i == 4) << i;
}

TEST_F(keyboard, opens_a_previous_file) {
    const QByteArray bytes = generator->sink(1);
    put_file("display.bin", bytes);
    put_file("marlo_rs232.ini", "1\r\n\"" + directory.filePath("display.bin").toLocal8Bit() + "\"\r\n" +
                                    QByteArray("\"\"\r\n").repeated(9) + "0\r\n0\r\n0\r\n");
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.find("cmd_pre_f").setFocus();
    press(Qt::Key_Space);
    ASSERT_TRUE(ui.is_shown("fra_pre_f"));
    EXPECT_EQ(walk().count("lab_pre_f_0"), 1);
    EXPECT_EQ(walk().count("lab_pre_f_1"), 0);
    ui.find("lab_pre_f_0").setFocus();
    press(Qt::Key_Return);
    EXPECT_FALSE(ui.is_shown("fra_pre_f"));
    EXPECT_TRUE(ui.text("txt_write").startsWith("00 FF FF FF FF FF FF 00"));
}

TEST_F(keyboard, walks_the_tree_and_closes_the_report_with_escape) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    ui.click("cmd_read_translate");
    ui.find("tree_edid").setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_TRUE(ui.text("txt_edid").contains("Block 0 is VESA Basic Block")) << qPrintable(ui.text("txt_edid"));
    std::string first;
    in_next_window("frm_report", [&](const ui_driver& report) {
        EXPECT_TRUE(gets_focus(report.find("frm_report")));
        first = focused();
        report.press_key("txt_report", Qt::Key_Escape);
        EXPECT_FALSE(report.is_shown("frm_report"));
    });
    ui.find("cmd_edid_report").setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(first, "txt_report");
}

TEST_F(keyboard, works_a_window_with_a_single_exit) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    QStringList order;
    in_next_window("frm_diag", [&](const ui_driver& diag) {
        EXPECT_TRUE(gets_focus(diag.find("frm_diag")));
        for (int i = 0; i < 5; ++i) {
            order << QApplication::focusWidget()->objectName();
            if (i < 4) press(Qt::Key_Tab);
        }
        press(Qt::Key_Return);
        EXPECT_FALSE(diag.is_shown("frm_diag")) << "EXIT is focused";
    });
    ui.press_key("cmd_sum_read", Qt::Key_Return);
    in_next_window("frm_diag", [&](const ui_driver& diag) {
        diag.press_key("chk_4digits", Qt::Key_Return);
        EXPECT_TRUE(diag.is_shown("frm_diag")) << "Enter does not press an unfocused EXIT";
        diag.press_key("chk_4digits", Qt::Key_Escape);
        EXPECT_FALSE(diag.is_shown("frm_diag"));
    });
    ui.press_key("cmd_sum_read", Qt::Key_Return);
    EXPECT_EQ(line(order), "cbo_eeprom opt_unused_0 chk_4digits cmd_checksum cmd_ok");
}

TEST_F(keyboard, has_unique_mnemonics_in_each_view) {
    start();
    for (const view_order& v : view_orders) {
        driver().click(v.button);
        QStringList seen;
        for (const auto* b : program->main_window().findChildren<QAbstractButton*>()) {
            const QString key = QKeySequence::mnemonic(b->text()).toString();
            if (key.isEmpty() || !b->isVisible()) continue;
            EXPECT_FALSE(seen.contains(key)) << v.button << ": " << qPrintable(key + " of " + b->objectName());
            seen << key;
        }
        EXPECT_GE(seen.size(), 10) << v.button;
    }
}

TEST_F(keyboard, shows_an_ampersand_as_text) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    desk().workbench.cmd_load.caption = "R&D";
    desk().workbench.opt_edid_src[0].caption = "R&D";
    desk().workbench.fra_edid.caption = "R&D";
    ui.click("lab_read"); // any event updates the window
    for (const char* name : {"cmd_load", "opt_edid_src_1"}) {
        EXPECT_EQ(ui.find<QAbstractButton>(name).text(), "R&&D");
        EXPECT_EQ(ui.find<QAbstractButton>(name).accessibleName(), "R&D");
        EXPECT_TRUE(QKeySequence::mnemonic(ui.find<QAbstractButton>(name).text()).isEmpty());
    }
    EXPECT_EQ(ui.find<QGroupBox>("fra_edid").title(), "R&&D");
}

} // namespace

} // namespace desk::gui
