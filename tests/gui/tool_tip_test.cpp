// The contents of tooltips: what the control does, why it does not, and the full text if it is elided.

#include "bench_fixture.h"
#include "controls/kinds.h"
#include "qt/elided_text.h"
#include "qt/help_lines.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QMessageBox>
#include <QTest>
#include <QToolTip>
#include <QTreeWidget>

namespace desk::gui {

namespace {

class tool_tip : public bench {
protected:
    tool_tip() { plug_generator(); }

    QString of(const QString& name) { return driver().find(name).toolTip(); }
    static QString at(QWidget& w, QPoint place) {
        QToolTip::hideText();
        QHelpEvent rests(QEvent::ToolTip, place, w.mapToGlobal(place));
        QCoreApplication::sendEvent(&w, &rests);
        return QToolTip::text();
    }
};

TEST_F(tool_tip, says_what_every_interactive_control_does) {
    start();
    for (const control* c : desk().form.controls()) {
        // the figures of lstv_timing_sub are never visible as a list
        if (is<button, combo_box, check_box, option_button, slider, tree_view, list_view>(*c)) {
            EXPECT_EQ(qt::help_line(*c).isEmpty(), c->name == "lstv_timing_sub") << c->full_name();
        }
        EXPECT_FALSE(qt::help_line(*c).endsWith('.')) << c->full_name();
        EXPECT_LE(qt::help_line(*c).size(), 110) << c->full_name() << " is one line";
    }
}

TEST_F(tool_tip, names_the_key_after_the_description) {
    start();
    EXPECT_EQ(of("cmd_run"), "<qt><nobr>Sends what this view shows to the generator (Alt+S)</nobr></qt>");
    EXPECT_EQ(of("cmd_save_read"), "<qt><nobr>Saves the text of the READ window (Alt+Shift+S)</nobr></qt>");
    EXPECT_EQ(of("cbo_com"), "<qt><nobr>Chooses a port and opens it at once</nobr></qt>");
}

TEST_F(tool_tip, says_why_the_port_is_closed_below_what_disconnect_does) {
    start();
    desk().exchange.cmd_disconn.tool_tip = "R&D can't be opened.";
    driver().click("lab_com");
    EXPECT_EQ(of("cmd_disconn"), "<qt><nobr>Closes the port (Alt+D)</nobr><br>R&amp;D can't be opened.</qt>");
    desk().exchange.cmd_disconn.tool_tip = "";
    driver().click("lab_com");
    EXPECT_EQ(of("cmd_disconn"), "<qt><nobr>Closes the port (Alt+D)</nobr></qt>");
}

TEST_F(tool_tip, appears_over_a_disabled_control_too) {
    start();
    driver().click("cmd_edid");
    QWidget& disabled = driver().find("cmd_verify");
    ASSERT_FALSE(disabled.isEnabled());
    EXPECT_TRUE(at(disabled, {5, 5}).contains("Reads the sink and compares")) << qPrintable(QToolTip::text());
}

TEST_F(tool_tip, shows_the_full_path_of_an_elided_previous_file) {
    start();
    driver().click("cmd_edid");
    const std::string path = "/bench/" + std::string(200, 'x') + "/display.hex";
    desk().workbench.lab_pre_f[0].caption = path;
    desk().workbench.lab_pre_f[1].caption = "/bench/display.hex";
    driver().click("cmd_pre_f");
    EXPECT_TRUE(at(driver().find("lab_pre_f_0"), {5, 5}).startsWith("<qt>" + QString::fromStdString(path)));
    EXPECT_EQ(at(driver().find("lab_pre_f_1"), {5, 5}), "<qt><nobr>Opens this file</nobr></qt>");
}

TEST_F(tool_tip, shows_the_full_text_of_an_elided_list_cell) {
    start();
    driver().click("cmd_auto");
    const std::string name = "[01] " + std::string(120, 'W');
    desk().autorun.lstv_auto.set_sub_item(1, 1, name);
    driver().click("lab_com");
    auto& list = driver().find<QTreeWidget>("lstv_auto");
    QTreeWidgetItem* const row = list.topLevelItem(0);
    const auto middle_of = [&](int column) { return list.visualRect(list.indexFromItem(row, column)).center(); };
    EXPECT_TRUE(at(*list.viewport(), middle_of(1)).startsWith("<qt>" + QString::fromStdString(name)));
    EXPECT_FALSE(at(*list.viewport(), middle_of(3)).contains('W'));
    EXPECT_TRUE(QToolTip::text().contains("Selects a row"));
}

TEST_F(tool_tip, shows_markup_in_a_name_as_it_is_written) {
    start();
    driver().click("cmd_auto");
    auto& combo = driver().find<QComboBox>("cbo_timing");
    desk().catalogue.cbo_timing.add_item("<b>" + std::string(120, 'W') + "</b>", 0);
    driver().click("lab_com");
    combo.showPopup();
    QWidget& rows = *combo.view()->viewport();
    combo.view()->scrollToTop();
    const QModelIndex first = combo.model()->index(0, 0);
    EXPECT_TRUE(at(rows, combo.view()->visualRect(first).center()).startsWith("<qt>&lt;b&gt;WWW"))
        << qPrintable(QToolTip::text());
    combo.hidePopup();
}

TEST_F(tool_tip, shows_the_full_text_of_an_elided_choice) {
    start();
    driver().click("cmd_auto");
    auto& combo = driver().find<QComboBox>("cbo_timing");
    EXPECT_EQ(at(combo, {5, 5}), combo.toolTip());
    const std::string name = std::string(120, 'W');
    desk().catalogue.cbo_timing.add_item(name, 0);
    desk().catalogue.cbo_timing.set_list_index(0);
    driver().click("lab_com");
    EXPECT_TRUE(at(combo, {5, 5}).startsWith("<qt>" + QString::fromStdString(name)));
}

TEST_F(tool_tip, shows_a_value_that_is_too_long_for_its_box) {
    start();
    driver().click("cmd_timing");
    desk().desk_frame.txt_htotal_pix.text = "1";
    driver().click("lab_com");
    EXPECT_EQ(qt::elided_text_at(driver().find("txt_htotal_pix"), {2, 2}), "");
    desk().desk_frame.txt_htotal_pix.text = std::string(60, '8');
    driver().click("lab_com");
    EXPECT_EQ(qt::elided_text_at(driver().find("txt_htotal_pix"), {2, 2}), QString(60, '8'));
}

class tool_tip_of_disconnect : public bench {};

TEST_F(tool_tip_of_disconnect, gives_device_reason_and_remedy) {
#ifdef _WIN32
    GTEST_SKIP() << "no file can have the name of a port there";
#endif
    put_file("com1", "no terminal");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    start();
    const QString tip = driver().find("cmd_disconn").toolTip();
    EXPECT_TRUE(tip.contains(com1().toHtmlEscaped() + " is not a serial port: choose another port."))
        << qPrintable(tip);
}

} // namespace

} // namespace desk::gui
