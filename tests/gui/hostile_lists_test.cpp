// What is marked is what is meant: lists, the tree, the wheel, the size of letters.

#include "bench_fixture.h"
#include "holding_hand.h"

#include "qt/look.h"

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

    holding_hand held() { return holding_hand(program->main_window()); }
    QTreeWidget& tree(const char* name) { return operator_hand().find<QTreeWidget>(name); }

    QPoint in_row(const char* list, int row) {
        auto& rows = tree(list);
        return rows.viewport()->mapTo(&rows, rows.visualItemRect(rows.topLevelItem(row - 1)).center());
    }

    /// The marked row; 0: none or more than one, or a mark that the keys do not start from.
    int marked(const char* list) {
        const QList<QTreeWidgetItem*> items = tree(list).selectedItems();
        if (items.size() != 1 || items.front() != tree(list).currentItem()) return 0;
        return tree(list).indexOfTopLevelItem(items.front()) + 1;
    }

    void translate() {
        const hand h = operator_hand();
        h.click("cmd_edid");
        h.click("cmd_read");
        h.click("cmd_read_translate");
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
            titles << "the keys start elsewhere";
        for (const QTreeWidgetItem* in = tree("tree_edid").currentItem(); in != nullptr; in = in->parent())
            if (in->parent() != nullptr && !in->parent()->isExpanded()) titles << "out of sight";
        return titles;
    }
    void expect_mark_on_shown(const std::string& after) {
        EXPECT_EQ(marked_titles(), bold_titles()) << after;
        EXPECT_EQ(marked_titles().size(), 1) << after;
    }
};

TEST_F(hostile_lists, the_marked_row_is_the_one_that_is_sent) {
    const hand h = operator_hand();
    h.click("cmd_timing");
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
        {"Ctrl and Space", [] { holding_hand::tap(Qt::Key_Space, Qt::ControlModifier); }},
        {"Space", [] { holding_hand::tap(Qt::Key_Space); }},
        {"Ctrl and Down", [] { holding_hand::tap(Qt::Key_Down, Qt::ControlModifier); }},
        {"Shift and Down", [] { holding_hand::tap(Qt::Key_Down, Qt::ShiftModifier); }},
        {"Ctrl and A", [] { holding_hand::tap(Qt::Key_A, Qt::ControlModifier); }},
        {"End", [] { holding_hand::tap(Qt::Key_End); }},
        {"Home", [] { holding_hand::tap(Qt::Key_Home); }},
        {"PageDown", [] { holding_hand::tap(Qt::Key_PageDown); }},
        {"a letter", [] { holding_hand::tap(Qt::Key_T); }},
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
    for (const auto& [name, deed] : deeds) {
        deed();
        EXPECT_EQ(marked("lstv_timing"), rows.selected()) << name;
        EXPECT_EQ(h.text("fra_desk"), QString::fromStdString(rows.text(rows.selected()))) << name;
    }
    generator->commands();
    h.click("cmd_run");
    EXPECT_EQ(generator->commands(), QStringList{"TIM006"});
}

TEST_F(hostile_lists, the_marked_node_is_the_one_whose_text_is_shown) {
    translate();
    expect_mark_on_shown("TRANS");
    const hand h = operator_hand();
    auto& nodes = tree("tree_edid");
    QTreeWidgetItem* const root = nodes.topLevelItem(0);
    const auto place = [&](QTreeWidgetItem* item) {
        const QRect r = nodes.visualItemRect(item);
        return nodes.viewport()->mapTo(&nodes, QPoint(r.left() + 12, r.center().y()));
    };
    ASSERT_TRUE(root->isExpanded());
    holding_hand::tap(Qt::Key_Down);
    expect_mark_on_shown("Down");
    EXPECT_EQ(marked_titles(), QStringList{root->child(0)->text(0)});
    holding_hand::press(Qt::Key_Down);
    holding_hand::repeat(Qt::Key_Down, 3);
    expect_mark_on_shown("held Down");
    holding_hand::release(Qt::Key_Down);
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
    holding_hand::tap(Qt::Key_Space, Qt::ControlModifier);
    expect_mark_on_shown("Ctrl and Space");
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home, Qt::Key_B, Qt::Key_Right, Qt::Key_Down}) {
        holding_hand::tap(key);
        expect_mark_on_shown("key " + std::to_string(key));
    }
    // the branch is closed by its box, with a child marked
    ASSERT_NE(nodes.currentItem(), root);
    const QRect r = nodes.visualItemRect(root);
    held().click_mouse("tree_edid", nodes.viewport()->mapTo(&nodes, QPoint(r.left() - 7, r.center().y())));
    ASSERT_FALSE(root->isExpanded());
    expect_mark_on_shown("closing the branch");
    EXPECT_EQ(marked_titles(), QStringList{root->text(0)});
    EXPECT_TRUE(h.text("txt_edid").contains("Block 0 is VESA Basic Block"));
}

TEST_F(hostile_lists, the_wheel_works_only_what_has_the_focus) {
    const hand h = operator_hand();
    h.click("cmd_pattern");
    h.click_row("lstv_pattern", 13);
    h.click("cmd_download");
    generator->commands();
    h.find("lstv_pattern").setFocus(Qt::TabFocusReason);
    auto& bar = h.find<QScrollBar>("hsr_color_setting_1");
    const int before = bar.value();
    for (const Qt::KeyboardModifiers with : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
        held().turn_wheel("hsr_color_setting_1", 2, with);
        held().turn_wheel("cbo_com", -2, with);
    }
    EXPECT_EQ(bar.value(), before);
    EXPECT_EQ(holding_hand::focused(), "lstv_pattern");
    EXPECT_EQ(generator->commands(), QStringList());
    EXPECT_EQ(desk().exchange.com_port, 1);

    bar.setFocus(Qt::TabFocusReason);
    held().turn_wheel("hsr_color_setting_1", 1);
    EXPECT_GT(bar.value(), before);
    h.find("cbo_com").setFocus(Qt::TabFocusReason);
    held().turn_wheel("cbo_com", -3);
    EXPECT_EQ(desk().exchange.com_port, 1) << "a port is never opened by the wheel";
}

TEST_F(hostile_lists, no_text_changes_the_size_of_its_letters) {
    translate();
    const hand h = operator_hand();
    h.find("txt_edid").setFocus(Qt::TabFocusReason);
    const auto height = [&] { return h.find<QTextEdit>("txt_edid").fontMetrics().height(); };
    const int before = height();
    for (const int notches : {-5, 3}) {
        held().turn_wheel("txt_edid", notches, Qt::ControlModifier);
        EXPECT_EQ(height(), before);
    }
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_0, Qt::Key_Equal}) {
        holding_hand::tap(key, Qt::ControlModifier);
        EXPECT_EQ(height(), before) << key;
    }
    h.click("cmd_edid_back");
    put_file("display.bin", generator->sink(1));
    std::vector<seen_dialog> dialogs;
    answer_next_file_dialog(dialogs, directory.filePath("display.bin"));
    h.click("cmd_load");
    h.click("cmd_compare");
    const auto& message = h.find<QPlainTextEdit>("txt_msg");
    const int message_before = message.fontMetrics().height();
    held().turn_wheel("txt_msg", -5, Qt::ControlModifier);
    EXPECT_EQ(message.fontMetrics().height(), message_before);
}

TEST_F(hostile_lists, the_desktop_changes_no_font) {
    operator_hand().click("cmd_edid");
    operator_hand().click("cmd_pre_f");
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
    const hand h = operator_hand();
    h.click("cmd_auto");
    h.click_row("lstv_auto", 2);
    const int timing = desk().catalogue.cbo_timing.list_index();
    const QPoint at = in_row("lstv_auto", 4);
    QTest::mouseDClick(program->main_window().windowHandle(), Qt::RightButton, Qt::NoModifier,
                       h.find("lstv_auto").mapTo(&program->main_window(), at));
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
