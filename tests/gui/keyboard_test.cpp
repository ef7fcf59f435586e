// The desk worked from the keyboard alone: every control is reached, in the order it is read.

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

    /// The controls that the tab key comes to, from the port list once around.
    QStringList walk(Qt::Key key = Qt::Key_Tab) {
        operator_hand().find("cbo_com").setFocus();
        QStringList order;
        do {
            order << QApplication::focusWidget()->objectName();
            press(key);
        } while (QApplication::focusWidget()->objectName() != "cbo_com" && order.size() < 200);
        return order;
    }

    /// The same without what stands above and beside every view, in one line.
    std::string walk_view() {
        QStringList order = walk();
        EXPECT_EQ(order.mid(0, above_and_beside.size()), above_and_beside);
        return line(order.mid(above_and_beside.size()));
    }

    static std::string line(const QStringList& names) { return names.join(' ').toStdString(); }
    static std::string focused() { return QApplication::focusWidget()->objectName().toStdString(); }

    /// A window that has just opened gets the keys a little later.
    static bool has_the_keys(const QWidget& w) {
        return wait_until(
            [&] { return QApplication::focusWidget() != nullptr && QApplication::focusWidget()->window() == &w; },
            20000);
    }

    /// The key is let go over whoever has the focus by then.
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

TEST_F(keyboard, comes_to_every_control_of_a_view_in_the_order_it_is_read) {
    start();
    for (const view_order& v : view_orders) {
        operator_hand().click(v.button);
        EXPECT_EQ(walk_view(), line(v.order)) << v.button;
    }
}

TEST_F(keyboard, goes_back_the_same_way) {
    start();
    operator_hand().click("cmd_fav_timing");
    QStringList order = walk();
    const QStringList back = walk(Qt::Key_Backtab);
    order.append(order.takeFirst());
    std::reverse(order.begin(), order.end());
    EXPECT_EQ(line(back), line(order));
}

TEST_F(keyboard, comes_to_the_color_values_and_the_custom_string) {
    start();
    const hand h = operator_hand();
    h.click("cmd_pattern");
    h.click_row("lstv_pattern", 13);
    h.click("cmd_download");
    // a key let go over the list would take the values away again
    h.find("cmd_download").setFocus();
    QStringList order;
    for (int i = 0; i < 9; ++i) {
        press(Qt::Key_Tab);
        order << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(line(order), "cmd_run hsr_color_setting_0 txt_color_setting_0 hsr_color_setting_1 txt_color_setting_1 "
                           "hsr_color_setting_2 txt_color_setting_2 hsr_color_setting_3 txt_color_setting_3");
    h.click_row("lstv_pattern", 41);
    EXPECT_EQ(walk_view(), "lstv_pattern cmd_download cmd_run txt_motion_str cmd_upload");
}

TEST_F(keyboard, passes_by_what_the_translation_covers) {
    start();
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_read");
    h.click("cmd_read_translate");
    EXPECT_EQ(walk_view(), "cmd_edid_report cmd_edid_back tree_edid txt_edid");
}

TEST_F(keyboard, goes_on_where_it_was_when_a_frame_has_gone) {
    start();
    const hand h = operator_hand();
    h.click("cmd_setup");
    h.click("cmd_about");
    h.find("cbo_com").setFocus();
    while (QApplication::focusWidget()->objectName() != "cmd_about_ok")
        press(Qt::Key_Tab);
    press(Qt::Key_Space);
    ASSERT_FALSE(h.is_shown("fra_about"));
    EXPECT_EQ(focused(), "cmd_about");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "cmd_timing");
}

TEST_F(keyboard, goes_round_a_group_of_option_buttons_with_the_arrow_keys) {
    start();
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.find("opt_edid_src_1").setFocus();
    press(Qt::Key_Right);
    EXPECT_TRUE(h.find("opt_edid_src_2").hasFocus());
    EXPECT_TRUE(desk().workbench.opt_edid_src[1].value);
    EXPECT_EQ(desk().shared_fields.edid_src, 2);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_TRUE(h.find("opt_edid_src_3").hasFocus());
    EXPECT_EQ(desk().shared_fields.edid_src, 3);
    press(Qt::Key_Down);
    EXPECT_EQ(desk().shared_fields.edid_src, 1);
    press(Qt::Key_Tab);
    EXPECT_TRUE(h.find("txt_write").hasFocus());
}

TEST_F(keyboard, ticks_the_rows_of_a_list) {
    start();
    operator_hand().click("cmd_fav_timing");
    operator_hand().find("lstv_timing").setFocus();
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
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.find("cmd_pre_f").setFocus();
    press(Qt::Key_Space);
    ASSERT_TRUE(h.is_shown("fra_pre_f"));
    EXPECT_EQ(walk().count("lab_pre_f_0"), 1);
    EXPECT_EQ(walk().count("lab_pre_f_1"), 0);
    h.find("lab_pre_f_0").setFocus();
    press(Qt::Key_Return);
    EXPECT_FALSE(h.is_shown("fra_pre_f"));
    EXPECT_TRUE(h.text("txt_write").startsWith("00 FF FF FF FF FF FF 00"));
}

TEST_F(keyboard, walks_the_tree_and_leaves_the_report_with_escape) {
    start();
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_read");
    h.click("cmd_read_translate");
    h.find("tree_edid").setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_TRUE(h.text("txt_edid").contains("Block 0 is VESA Basic Block")) << qPrintable(h.text("txt_edid"));
    std::string first;
    in_next_window("frm_report", [&](const hand& report) {
        EXPECT_TRUE(has_the_keys(report.find("frm_report")));
        first = focused();
        report.press_key("txt_report", Qt::Key_Escape);
        EXPECT_FALSE(report.is_shown("frm_report"));
    });
    h.find("cmd_edid_report").setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(first, "txt_report");
}

TEST_F(keyboard, works_a_window_that_has_one_way_out_alone) {
    start();
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_read");
    QStringList order;
    in_next_window("frm_diag", [&](const hand& diag) {
        EXPECT_TRUE(has_the_keys(diag.find("frm_diag")));
        for (int i = 0; i < 5; ++i) {
            order << QApplication::focusWidget()->objectName();
            if (i < 4) press(Qt::Key_Tab);
        }
        press(Qt::Key_Return);
        EXPECT_FALSE(diag.is_shown("frm_diag")) << "the keys are on EXIT";
    });
    h.press_key("cmd_sum_read", Qt::Key_Return);
    in_next_window("frm_diag", [&](const hand& diag) {
        diag.press_key("chk_4digits", Qt::Key_Return);
        EXPECT_TRUE(diag.is_shown("frm_diag")) << "Enter presses no EXIT from afar";
        diag.press_key("chk_4digits", Qt::Key_Escape);
        EXPECT_FALSE(diag.is_shown("frm_diag"));
    });
    h.press_key("cmd_sum_read", Qt::Key_Return);
    EXPECT_EQ(line(order), "cbo_eeprom opt_unused_0 chk_4digits cmd_checksum cmd_ok");
}

TEST_F(keyboard, has_no_mnemonic_twice_in_a_view) {
    start();
    for (const view_order& v : view_orders) {
        operator_hand().click(v.button);
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

TEST_F(keyboard, takes_an_ampersand_for_itself) {
    start();
    const hand h = operator_hand();
    h.click("cmd_edid");
    desk().workbench.cmd_load.caption = "R&D";
    desk().workbench.opt_edid_src[0].caption = "R&D";
    desk().workbench.fra_edid.caption = "R&D";
    h.click("lab_read"); // any event brings the window up to date
    for (const char* name : {"cmd_load", "opt_edid_src_1"}) {
        EXPECT_EQ(h.find<QAbstractButton>(name).text(), "R&&D");
        EXPECT_EQ(h.find<QAbstractButton>(name).accessibleName(), "R&D");
        EXPECT_TRUE(QKeySequence::mnemonic(h.find<QAbstractButton>(name).text()).isEmpty());
    }
    EXPECT_EQ(h.find<QGroupBox>("fra_edid").title(), "R&&D");
}

} // namespace

} // namespace desk::gui
