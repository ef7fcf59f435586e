// What a tooltip says: what the control does, why it does not, and the whole of a text that is cut.

#include "bench_fixture.h"
#include "qt/cut_text.h"
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

    QString of(const QString& name) { return operator_hand().find(name).toolTip(); }
    /// What comes up where the pointer rests.
    static QString at(QWidget& w, QPoint place) {
        QToolTip::hideText();
        QHelpEvent rests(QEvent::ToolTip, place, w.mapToGlobal(place));
        QCoreApplication::sendEvent(&w, &rests);
        return QToolTip::text();
    }
};

TEST_F(tool_tip, says_what_every_control_does_that_the_operator_works) {
    start();
    for (const control* c : desk().form.controls()) {
        switch (c->kind()) {
        case control_kind::button:
        case control_kind::combo_box:
        case control_kind::check_box:
        case control_kind::option_button:
        case control_kind::slider:
        case control_kind::tree_view:
            EXPECT_FALSE(qt::help_line(*c).isEmpty()) << c->full_name();
            break;
        case control_kind::list_view:
            // the figures are never on show as a list
            EXPECT_EQ(qt::help_line(*c).isEmpty(), c->name == "lstv_timing_sub") << c->full_name();
            break;
        default:
            break;
        }
        EXPECT_FALSE(qt::help_line(*c).endsWith('.')) << c->full_name();
        EXPECT_LE(qt::help_line(*c).size(), 110) << c->full_name() << " is one line";
    }
}

TEST_F(tool_tip, names_the_key_behind_it) {
    start();
    EXPECT_EQ(of("cmd_run"), "<qt><nobr>Sends what this view shows to the generator (Alt+S)</nobr></qt>");
    EXPECT_EQ(of("cmd_save_read"), "<qt><nobr>Saves the text of the READ window (Alt+Shift+S)</nobr></qt>");
    EXPECT_EQ(of("cbo_com"), "<qt><nobr>Chooses a port and opens it at once</nobr></qt>");
}

TEST_F(tool_tip, says_why_the_port_is_closed_below_what_disconnect_does) {
    start();
    desk().exchange.cmd_disconn.tool_tip = "R&D can't be opened.";
    operator_hand().click("lab_com");
    EXPECT_EQ(of("cmd_disconn"), "<qt><nobr>Closes the port (Alt+D)</nobr><br>R&amp;D can't be opened.</qt>");
    desk().exchange.cmd_disconn.tool_tip = "";
    operator_hand().click("lab_com");
    EXPECT_EQ(of("cmd_disconn"), "<qt><nobr>Closes the port (Alt+D)</nobr></qt>");
}

TEST_F(tool_tip, of_a_dead_control_comes_up_too) {
    start();
    operator_hand().click("cmd_edid");
    QWidget& dead = operator_hand().find("cmd_verify");
    ASSERT_FALSE(dead.isEnabled());
    EXPECT_TRUE(at(dead, {5, 5}).contains("Reads the sink and compares")) << qPrintable(QToolTip::text());
}

TEST_F(tool_tip, shows_the_whole_path_of_a_previous_file_that_is_cut) {
    start();
    operator_hand().click("cmd_edid");
    const std::string path = "/bench/" + std::string(200, 'x') + "/display.hex";
    desk().workbench.lab_pre_f[0].caption = path;
    desk().workbench.lab_pre_f[1].caption = "/bench/display.hex";
    operator_hand().click("cmd_pre_f");
    EXPECT_TRUE(at(operator_hand().find("lab_pre_f_0"), {5, 5}).startsWith("<qt>" + QString::fromStdString(path)));
    EXPECT_EQ(at(operator_hand().find("lab_pre_f_1"), {5, 5}), "<qt><nobr>Opens this file</nobr></qt>");
}

TEST_F(tool_tip, shows_the_whole_cell_of_a_list_that_is_cut) {
    start();
    operator_hand().click("cmd_auto");
    const std::string name = "[01] " + std::string(120, 'W');
    desk().autorun.lstv_auto.set_sub_item(1, 1, name);
    operator_hand().click("lab_com");
    auto& list = operator_hand().find<QTreeWidget>("lstv_auto");
    QTreeWidgetItem* const row = list.topLevelItem(0);
    const auto middle_of = [&](int column) { return list.visualRect(list.indexFromItem(row, column)).center(); };
    EXPECT_TRUE(at(*list.viewport(), middle_of(1)).startsWith("<qt>" + QString::fromStdString(name)));
    EXPECT_FALSE(at(*list.viewport(), middle_of(3)).contains('W'));
    EXPECT_TRUE(QToolTip::text().contains("Selects a row"));
}

TEST_F(tool_tip, shows_markup_in_a_name_as_it_is_written) {
    start();
    operator_hand().click("cmd_auto");
    auto& combo = operator_hand().find<QComboBox>("cbo_timing");
    desk().catalogue.cbo_timing.add_item("<b>" + std::string(120, 'W') + "</b>", 0);
    operator_hand().click("lab_com");
    combo.showPopup();
    QWidget& rows = *combo.view()->viewport();
    combo.view()->scrollToTop();
    const QModelIndex first = combo.model()->index(0, 0);
    EXPECT_TRUE(at(rows, combo.view()->visualRect(first).center()).startsWith("<qt>&lt;b&gt;WWW"))
        << qPrintable(QToolTip::text());
    combo.hidePopup();
}

TEST_F(tool_tip, shows_the_whole_choice_of_a_list_that_is_cut) {
    start();
    operator_hand().click("cmd_auto");
    auto& combo = operator_hand().find<QComboBox>("cbo_timing");
    EXPECT_EQ(at(combo, {5, 5}), combo.toolTip());
    const std::string name = std::string(120, 'W');
    desk().catalogue.cbo_timing.add_item(name, 0);
    desk().catalogue.cbo_timing.set_list_index(0);
    operator_hand().click("lab_com");
    EXPECT_TRUE(at(combo, {5, 5}).startsWith("<qt>" + QString::fromStdString(name)));
}

TEST_F(tool_tip, shows_a_value_that_is_too_long_for_its_box) {
    start();
    operator_hand().click("cmd_timing");
    desk().desk_frame.txt_htotal_pix.text = "1";
    operator_hand().click("lab_com");
    EXPECT_EQ(qt::cut_text_at(operator_hand().find("txt_htotal_pix"), {2, 2}), "");
    desk().desk_frame.txt_htotal_pix.text = std::string(60, '8');
    operator_hand().click("lab_com");
    EXPECT_EQ(qt::cut_text_at(operator_hand().find("txt_htotal_pix"), {2, 2}), QString(60, '8'));
}

class tool_tip_of_disconnect : public bench {};

TEST_F(tool_tip_of_disconnect, tells_device_reason_and_what_helps) {
#ifdef _WIN32
    GTEST_SKIP() << "no file can have the name of a port there";
#endif
    put_file("com1", "no terminal");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    start();
    const QString said = operator_hand().find("cmd_disconn").toolTip();
    EXPECT_TRUE(said.contains(com1().toHtmlEscaped() + " is no serial port: choose another port.")) << qPrintable(said);
}

} // namespace

} // namespace desk::gui
