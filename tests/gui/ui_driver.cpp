#include "ui_driver.h"

#include "qt/appearance.h"
#include "qt/text_label.h"
#include "qt/text_page.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QTreeWidget>
#include <QWheelEvent>
#include <QWindow>

#include <stdexcept>

namespace desk::gui {

QWidget& ui_driver::find(const QString& name) const {
    auto* const found = window_.objectName() == name ? &window_ : window_.findChild<QWidget*>(name);
    if (found == nullptr) throw std::runtime_error("there is no widget " + name.toStdString());
    return *found;
}

void ui_driver::click_at(const QWidget& w, QPoint at) const {
    QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, Qt::NoModifier, w.mapTo(&window_, at));
}

void ui_driver::click(const QString& name) const {
    const QWidget& w = find(name);
    // a wide check box or option button is clickable only on its mark and text
    click_at(w, {8, w.height() / 2});
}

QPoint ui_driver::point_in_row(const QString& list, int row, bool on_check_box) const {
    auto& tree = find<QTreeWidget>(list);
    QTreeWidgetItem* const item = tree.topLevelItem(row - 1);
    if (item == nullptr) throw std::runtime_error("there is no such row in " + list.toStdString());
    tree.scrollToItem(item);
    const QRect place = tree.visualItemRect(item);
    QStyleOptionViewItem option;
    option.initFrom(&tree);
    option.rect = place;
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    const QRect box = tree.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &tree);
    return on_check_box ? box.center() : QPoint(place.left() + 60, place.center().y());
}

void ui_driver::click_row(const QString& list, int row) const {
    const QPoint at = point_in_row(list, row, false);
    click_at(*find<QTreeWidget>(list).viewport(), at);
}

void ui_driver::drag_rows(const QString& list, int from, int to) const {
    const QWidget& rows = *find<QTreeWidget>(list).viewport();
    QWindow* const w = window_.windowHandle();
    QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, rows.mapTo(&window_, point_in_row(list, from, false)));
    QTest::mouseMove(w, rows.mapTo(&window_, point_in_row(list, to, false)));
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, rows.mapTo(&window_, point_in_row(list, to, false)));
}

void ui_driver::turn_wheel(const QString& name) const {
    QWidget& w = find(name);
    const QPointF at(w.rect().center());
    QWheelEvent turn(at, w.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&w, &turn);
}

void ui_driver::double_click_row(const QString& list, int row) const {
    const QPoint at = point_in_row(list, row, false);
    QTest::mouseDClick(window_.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       find<QTreeWidget>(list).viewport()->mapTo(&window_, at));
}

void ui_driver::click_check(const QString& list, int row) const {
    const QPoint at = point_in_row(list, row, true);
    click_at(*find<QTreeWidget>(list).viewport(), at);
}

void ui_driver::click_node(const QString& tree, const QStringList& titles) const {
    auto& nodes = find<QTreeWidget>(tree);
    QTreeWidgetItem* node = nodes.invisibleRootItem();
    for (const QString& title : titles) {
        node->setExpanded(true);
        int i = 0;
        while (i < node->childCount() && node->child(i)->text(0) != title)
            ++i;
        node = node->child(i);
        if (node == nullptr) throw std::runtime_error("the tree has no node " + titles.join(", ").toStdString());
    }
    nodes.scrollToItem(node);
    const QRect place = nodes.visualItemRect(node);
    click_at(*nodes.viewport(), {place.left() + 12, place.center().y()});
}

void ui_driver::choose(const QString& combo, int index) const {
    auto& box = find<QComboBox>(combo);
    // as if tabbed to by the operator
    box.setFocus(Qt::TabFocusReason);
    while (box.currentIndex() != index) {
        const int before = box.currentIndex();
        QTest::keyClick(&box, before < index ? Qt::Key_Down : Qt::Key_Up);
        if (box.currentIndex() == before) throw std::runtime_error("the list does not move");
    }
}

void ui_driver::type(const QString& box, const QString& text) const {
    auto& line = find<QLineEdit>(box);
    click(box);
    line.selectAll();
    QTest::keyClicks(&line, text);
}

void ui_driver::press_key(const QString& name, Qt::Key key) const { QTest::keyClick(&find(name), key); }

QString ui_driver::text(const QString& name) const {
    QWidget& w = find(name);
    if (const auto* const l = dynamic_cast<qt::text_label*>(&w)) return l->text();
    if (const auto* const line = dynamic_cast<QLineEdit*>(&w)) return line->text();
    if (auto* const page = dynamic_cast<qt::text_page*>(&w)) return qt::shown_text(page->lines().text());
    if (const auto* const page = dynamic_cast<QPlainTextEdit*>(&w)) return page->toPlainText();
    if (const auto* const page = dynamic_cast<QTextEdit*>(&w)) return page->toPlainText();
    if (const auto* const button = dynamic_cast<QAbstractButton*>(&w)) return button->accessibleName();
    if (const auto* const frame = dynamic_cast<QGroupBox*>(&w)) return frame->title();
    if (const auto* const combo = dynamic_cast<QComboBox*>(&w)) return combo->currentText();
    return w.windowTitle();
}

namespace {

/// What is visible of a window: on a real screen, the screen itself.
QPixmap picture_of(QWidget& window) {
    if (QGuiApplication::platformName() == "offscreen") return window.grab();
    QTest::qWait(200); // until the screen has drawn it
    const QRect frame = window.frameGeometry();
    return window.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
}

} // namespace

void ui_driver::save_picture(const QString& path) const {
    if (!picture_of(window_).save(path)) throw std::runtime_error(path.toStdString() + " can't be written");
}

void ui_driver::when(std::function<bool()> condition, std::function<void()> work) const {
    auto* const poll = new QTimer(&window_);
    poll->setTimerType(Qt::PreciseTimer);
    QObject::connect(poll, &QTimer::timeout, &window_,
                     [poll, condition = std::move(condition), work = std::move(work)] {
                         if (!poll->isActive() || !condition()) return;
                         poll->stop();
                         poll->deleteLater();
                         work();
                     });
    poll->start(1);
}

bool wait_until(const std::function<bool()>& done, int ms) { return QTest::qWaitFor(done, ms); }

} // namespace desk::gui
