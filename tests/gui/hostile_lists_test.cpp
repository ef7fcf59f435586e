// The mark shows the selection: lists, the tree, the wheel, the font size.

#include "bench_fixture.h"
#include "raw_input.h"

#include "qt/appearance.h"

#include <QApplication>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace desk::gui {

namespace {

class hostile_lists : public bench {
protected:
    hostile_lists() {
        plug_generator();
        start();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&program->main_window()));
    }

    raw_input held() { return raw_input(program->main_window()); }
    QTreeWidget& tree(const char* name) { return driver().find<QTreeWidget>(name); }

    QPoint in_row(const char* list, int row) {
        auto& rows = tree(list);
        return rows.viewport()->mapTo(&rows, rows.visualItemRect(rows.topLevelItem(row - 1)).center());
    }

    /// The marked row; 0 if none or several are marked, or if the mark is not the keyboard's current row.
    int marked(const char* list) {
        const QList<QTreeWidgetItem*> items = tree(list).selectedItems();
        if (items.size() != 1 || items.front() != tree(list).currentItem()) return 0;
        return tree(list).indexOfTopLevelItem(items.front()) + 1;
    }

    void translate() {
        const ui_driver ui = driver();
        ui.click("cmd_edid");
        ui.click("cmd_read");
        ui.click("cmd_read_translate");
    }

    QStringList bold_titles() {
        QStringList titles;
        for (const tree_node& n : desk().translation_frame.tree_edid.nodes())
            if (n.bold) titles << QString::fromStdString(n.title);
        return titles;
    }
    QStringList marked_titles() {
        QStringList titles;
        for (const QTreeWidgetItem* item : tree("tree_edid").selectedItems())
            titles << item->text(0);
        if (tree("tree_edid").currentItem() == nullptr || !tree("tree_edid").currentItem()->isSelected())
            titles << "the current row differs";
        for (const QTreeWidgetItem* in = tree("tree_edid").currentItem(); in != nullptr; in = in->parent())
            if (in->parent() != nullptr && !in->parent()->isExpanded()) titles << "out of sight";
        return titles;
    }
    void expect_mark_on_shown(const std::string& after) {
        EXPECT_EQ(marked_titles(), bold_titles()) << after;
        EXPECT_EQ(marked_titles().size(), 1) << after;
    }
};

TEST_F(hostile_lists, the_marked_row_is_sent) {
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    const list_view& rows = desk().catalogue.lstv_timing;
    const auto click = [this](int row, Qt::KeyboardModifiers with, Qt::MouseButton button = Qt::LeftButton) {
        held().click_mouse("lstv_timing", in_row("lstv_timing", row), button, with);
    };
    const std::vector<std::pair<const char*, std::function<void()>>> deeds = {
        {"click", [&] { click(3, Qt::NoModifier); }},
        {"Ctrl and click on it", [&] { click(3, Qt::ControlModifier); }},
        {"Ctrl and click on another", [&] { click(5, Qt::ControlModifier); }},
        {"Shift and click", [&] { click(2, Qt::ShiftModifier); }},
        {"right click", [&] { click(6, Qt::NoModifier, Qt::RightButton); }},
        {"middle click", [&] { click(7, Qt::NoModifier, Qt::MiddleButton); }},
        {"Ctrl and Space", [] { raw_input::tap(Qt::Key_Space, Qt::ControlModifier); }},
        {"Space", [] { raw_input::tap(Qt::Key_Space); }},
        {"Ctrl and Down", [] { raw_input::tap(Qt::Key_Down, Qt::ControlModifier); }},
        {"Shift and Down", [] { raw_input::tap(Qt::Key_Down, Qt::ShiftModifier); }},
        {"Ctrl and A", [] { raw_input::tap(Qt::Key_A, Qt::ControlModifier); }},
        {"End", [] { raw_input::tap(Qt::Key_End); }},
        {"Home", [] { raw_input::tap(Qt::Key_Home); }},
        {"PageDown", [] { raw_input::tap(Qt::Key_PageDown); }},
        {"a letter", [] { raw_input::tap(Qt::Key_T); }},
        {"drag",
         [&] {
             tree("lstv_timing").scrollToTop();
             held().press_mouse("lstv_timing", in_row("lstv_timing", 2));
             held().move_mouse("lstv_timing", in_row("lstv_timing", 4));
             held().release_mouse("lstv_timing", in_row("lstv_timing", 4));
         }},
        {"press, let go elsewhere",
         [&] {
             held().press_mouse("lstv_timing", in_row("lstv_timing", 6));
             held().release_mouse("fra_desk", {20, 20});
         }},
    };
    for (const auto& [name, mouse_action] : deeds) {
        mouse_action();
        EXPECT_EQ(marked("lstv_timing"), rows.selected()) << name;
        EXPECT_EQ(ui.text("fra_desk"), QString::fromStdString(rows.text(rows.selected()))) << name;
    }
    generator->commands();
    ui.click("cmd_run");
    EXPECT_EQ(generator->commands(), QStringList{"TIM006"});
}

TEST_F(hostile_lists, the_marked_nodes_text_is_shown) {
    translate();
    expect_mark_on_shown("TRANS");
    const ui_driver ui = driver();
    auto& nodes = tree("tree_edid");
    QTreeWidgetItem* const root = nodes.topLevelItem(0);
    const auto place = [&](QTreeWidgetItem* item) {
        const QRect r = nodes.visualItemRect(item);
        return nodes.viewport()->mapTo(&nodes, QPoint(r.left() + 12, r.center().y()));
    };
    ASSERT_TRUE(root->isExpanded());
    raw_input::tap(Qt::Key_Down);
    expect_mark_on_shown("Down");
    EXPECT_EQ(marked_titles(), QStringList{root->child(0)->text(0)});
    raw_input::press(Qt::Key_Down);
    raw_input::repeat(Qt::Key_Down, 3);
    expect_mark_on_shown("held Down");
    raw_input::release(Qt::Key_Down);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        const QStringList before = marked_titles();
        held().click_mouse("tree_edid", place(root->child(0)), button);
        EXPECT_EQ(marked_titles(), before);
        expect_mark_on_shown("another button");
    }
    for (const Qt::KeyboardModifiers with : {Qt::ControlModifier, Qt::ShiftModifier}) {
        held().click_mouse("tree_edid", place(root->child(1)), Qt::LeftButton, with);
        expect_mark_on_shown("click");
        held().click_mouse("tree_edid", place(root->child(1)), Qt::LeftButton, with);
        expect_mark_on_shown("click again");
    }
    held().press_mouse("tree_edid", place(root->child(0)));
    expect_mark_on_shown("press");
    held().move_mouse("tree_edid", place(root->child(3)));
    expect_mark_on_shown("drag");
    held().release_mouse("tree_edid", {-20, -20});
    expect_mark_on_shown("let go outside");
    raw_input::tap(Qt::Key_Space, Qt::ControlModifier);
    expect_mark_on_shown("Ctrl and Space");
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home, Qt::Key_B, Qt::Key_Right, Qt::Key_Down}) {
        raw_input::tap(key);
        expect_mark_on_shown("key " + std::to_string(key));
    }
    // the branch is collapsed while a child is marked
    ASSERT_NE(nodes.currentItem(), root);
    const QRect r = nodes.visualItemRect(root);
    held().click_mouse("tree_edid", nodes.viewport()->mapTo(&nodes, QPoint(r.left() - 7, r.center().y())));
    ASSERT_FALSE(root->isExpanded());
    expect_mark_on_shown("closing the branch");
    EXPECT_EQ(marked_titles(), QStringList{root->text(0)});
    EXPECT_TRUE(ui.text("txt_edid").contains("Block 0 is VESA Basic Block"));
}

TEST_F(hostile_lists, the_wheel_works_only_on_the_focused_control) {
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 13);
    ui.click("cmd_download");
    generator->commands();
    ui.find("lstv_pattern").setFocus(Qt::TabFocusReason);
    auto& bar = ui.find<QScrollBar>("hsr_color_setting_1");
    const int before = bar.value();
    for (const Qt::KeyboardModifiers with : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
        held().turn_wheel("hsr_color_setting_1", 2, with);
        held().turn_wheel("cbo_com", -2, with);
    }
    EXPECT_EQ(bar.value(), before);
    EXPECT_EQ(raw_input::focused(), "lstv_pattern");
    EXPECT_EQ(generator->commands(), QStringList());
    EXPECT_EQ(desk().exchange.com_port, 1);

    bar.setFocus(Qt::TabFocusReason);
    held().turn_wheel("hsr_color_setting_1", 1);
    EXPECT_GT(bar.value(), before);
    ui.find("cbo_com").setFocus(Qt::TabFocusReason);
    held().turn_wheel("cbo_com", -3);
    EXPECT_EQ(desk().exchange.com_port, 1) << "a port is never opened by the wheel";
}

TEST_F(hostile_lists, no_text_can_be_zoomed) {
    translate();
    const ui_driver ui = driver();
    ui.find("txt_edid").setFocus(Qt::TabFocusReason);
    const auto height = [&] { return ui.find<QTextEdit>("txt_edid").fontMetrics().height(); };
    const int before = height();
    for (const int notches : {-5, 3}) {
        held().turn_wheel("txt_edid", notches, Qt::ControlModifier);
        EXPECT_EQ(height(), before);
    }
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_0, Qt::Key_Equal}) {
        raw_input::tap(key, Qt::ControlModifier);
        EXPECT_EQ(height(), before) << key;
    }
    ui.click("cmd_edid_back");
    put_file("display.bin", generator->sink(1));
    std::vector<seen_dialog> dialogs;
    answer_next_file_dialog(dialogs, directory.filePath("display.bin"));
    ui.click("cmd_load");
    ui.click("cmd_compare");
    const auto& message = ui.find<QPlainTextEdit>("txt_msg");
    const int message_before = message.fontMetrics().height();
    held().turn_wheel("txt_msg", -5, Qt::ControlModifier);
    EXPECT_EQ(message.fontMetrics().height(), message_before);
}

TEST_F(hostile_lists, the_desktop_changes_no_font) {
    driver().click("cmd_edid");
    driver().click("cmd_pre_f");
    std::map<const QWidget*, QString> before;
    for (const QWidget* w : program->main_window().findChildren<QWidget*>())
        before[w] = w->font().toString();
    QFont other("Liberation Mono", 16);
    other.setItalic(true);
    QApplication::setFont(other);
    for (const char* kind : {"QPushButton", "QTreeWidget", "QAbstractItemView", "QHeaderView", "QComboBox", "QLineEdit",
                             "QMenu", "QTipLabel", "QGroupBox", "QCheckBox"})
        QApplication::setFont(other, kind);
    QApplication::processEvents();
    for (const auto& [w, font] : before)
        EXPECT_EQ(w->font().toString().toStdString(), font.toStdString()) << qPrintable(w->objectName());
    for (const char* kind : {"QMenu", "QTipLabel", "QComboBoxPrivateContainer"})
        EXPECT_TRUE(QApplication::font(kind) == qt::font_of(text_font::sans)) << kind;
}

TEST_F(hostile_lists, a_second_button_or_a_right_double_click_does_nothing) {
    const ui_driver ui = driver();
    ui.click("cmd_auto");
    ui.click_row("lstv_auto", 2);
    const int timing = desk().catalogue.cbo_timing.list_index();
    const QPoint at = in_row("lstv_auto", 4);
    QTest::mouseDClick(program->main_window().windowHandle(), Qt::RightButton, Qt::NoModifier,
                       ui.find("lstv_auto").mapTo(&program->main_window(), at));
    EXPECT_EQ(desk().catalogue.cbo_timing.list_index(), timing);
    EXPECT_EQ(marked("lstv_auto"), 2);
    EXPECT_EQ(desk().autorun.lstv_auto.selected(), 2);
    generator->commands();
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton})
        held().click_mouse("cmd_run", {8, 8}, button);
    EXPECT_EQ(generator->commands(), QStringList());
}

} // namespace

} // namespace desk::gui
