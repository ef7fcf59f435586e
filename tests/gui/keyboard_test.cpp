// The desk worked from the keyboard alone: every control is reached, in the order it is read.

#include "bench_fixture.h"

#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <map>

namespace desk::gui {

namespace {

const QStringList above_and_beside = {"cbo_com",         "cmd_conn", "cmd_disconn", "cmd_about", "cmd_timing",
                                      "cmd_pattern",     "cmd_fav_timing", "cmd_fav_pattern", "cmd_edid", "cmd_auto",
                                      "cmd_setup",       "cmd_refresh"};

class keyboard : public bench {
protected:
    keyboard() { plug_generator(); }

    /// The controls that the tab key comes to, from the port list once around.
    QStringList walk(Qt::Key key = Qt::Key_Tab) {
        operator_hand().find("cbo_com").setFocus();
        QStringList order;
        do {
            order << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), key);
        } while (QApplication::focusWidget()->objectName() != "cbo_com" && order.size() < 200);
        return order;
    }

    /// The same without what stands above and beside every view.
    QStringList walk_view() {
        QStringList order = walk();
        EXPECT_EQ(order.mid(0, above_and_beside.size()), above_and_beside);
        return order.mid(above_and_beside.size());
    }

    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
};

TEST_F(keyboard, dump) {
    start();
    for (const char* v : {"cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern", "cmd_edid", "cmd_auto", "cmd_setup"}) {
        operator_hand().click(v);
        printf("%s: %s\n", v, qPrintable(walk_view().join(" ")));
    }
}

} // namespace

} // namespace desk::gui
