// EDID texts, short and long: scrolling, selecting and copying.

#include "bench_fixture.h"
#include "qt/appearance.h"
#include "qt/text_page.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <string>

namespace desk::gui {

namespace {

class edid_text : public bench {
protected:
    edid_text() {
        plug_generator();
        start();
        driver().click("cmd_edid");
    }

    qt::text_page& page() { return driver().find<qt::text_page>("txt_write"); }

    /// Shows a text; any event updates the window.
    void show(const std::string& text) {
        desk().workbench.txt_write.text = text;
        driver().click("lab_edid_src");
    }
    void show_lines(int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "line " + std::to_string(i) + "\r\n";
        show(text);
    }
    void open(const QString& name) {
        std::vector<seen_dialog> dialogs;
        answer_next_file_dialog(dialogs, QDir::toNativeSeparators(directory.filePath(name)));
        driver().click("cmd_load");
    }
    void open_megabytes(int count) {
        put_file("long.bin", QByteArray(count * 1024 * 1024, '\x10'));
        open("long.bin");
    }

    void press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) { QTest::keyClick(&page(), key, with); }
    /// The middle of a character's left edge; a click there puts the cursor before it.
    QPoint before(std::size_t offset) {
        const QRect place = page().place_of(offset);
        return {place.left() + 1, place.center().y()};
    }
    QPoint in_window(QPoint at) { return page().viewport()->mapTo(&program->main_window(), at); }
    QWindow* window() { return program->main_window().windowHandle(); }
    void click(QPoint at, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::mouseClick(window(), Qt::LeftButton, with, in_window(at));
    }
    void drag(QPoint from, QPoint to) {
        QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, in_window(from));
        QTest::mouseMove(window(), in_window(to));
        QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, in_window(to));
    }
    QString selected() {
        const text_lines::range part = page().selection();
        return qt::shown_text(page().lines().text().substr(part.begin, part.end - part.begin));
    }
    QString copied() {
        QApplication::clipboard()->clear();
        press(Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    }
    bool in_sight(std::size_t offset) { return page().viewport()->rect().contains(page().place_of(offset)); }
    /// Whether anything is drawn at a character's place.
    bool drawn(std::size_t offset) {
        const QRect place = page().place_of(offset).adjusted(1, 0, 0, 0); // beside the cursor
        const qreal scale = page().devicePixelRatioF();
        const QImage seen = page().viewport()->grab().toImage();
        for (int y = int(place.top() * scale); y < int(place.bottom() * scale); ++y)
            for (int x = int(place.left() * scale); x < int(place.right() * scale); ++x)
                if (seen.valid(x, y) && qGray(seen.pixel(x, y)) < 100) return true;
        return false;
    }
};

TEST_F(edid_text, of_4_megabytes_shows_its_last_line) {
    open_megabytes(4);
    const text_lines& lines = page().lines();
    const std::size_t last = lines.begin_of(lines.count() - 2);
    EXPECT_EQ(lines.line(lines.count() - 2), "10 10 10 10 10 10 10 10 //3FFFFF");
    EXPECT_TRUE(in_sight(0));
    EXPECT_FALSE(in_sight(last));
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(in_sight(last));
    EXPECT_TRUE(drawn(last));
    page().verticalScrollBar()->setValue(0);
    EXPECT_TRUE(drawn(0));
    page().verticalScrollBar()->setValue(page().verticalScrollBar()->maximum());
    EXPECT_TRUE(in_sight(last));
}

TEST_F(edid_text, of_4_megabytes_is_copied_whole) {
    open_megabytes(4);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(copied(), qt::shown_text(desk().workbench.txt_write.text.get()));
}

TEST_F(edid_text, of_16_megabytes_takes_less_than_160_megabytes_to_open) {
#if !defined(__linux__) || defined(WITH_SANITIZERS)
    GTEST_SKIP() << "peak memory is unknown, or raised by the sanitizer";
#else
    const auto status_mb = [](const QByteArray& entry) {
        QFile status("/proc/self/status");
        EXPECT_TRUE(status.open(QFile::ReadOnly));
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith(entry)) return line.simplified().split(' ').value(1).toInt() / 1024;
        return 0;
    };
    put_file("long.bin", QByteArray(4 * 1024 * 1024, '\x10'));
    QFile peak("/proc/self/clear_refs");
    if (!peak.open(QFile::WriteOnly | QFile::Unbuffered) || peak.write("5") != 1)
        GTEST_SKIP() << "the peak memory can't be reset";
    const int before = status_mb("VmRSS:");
    open("long.bin");
    EXPECT_GT(desk().workbench.txt_write.text.get().size(), 16'000'000U);
    // 40 MB of the 200 MB are the program itself
    EXPECT_LT(status_mb("VmHWM:") - before, 160);
#endif
}

TEST_F(edid_text, of_one_long_line_scrolls_sideways) {
    show(std::string(1'000'000, '7') + "F");
    EXPECT_TRUE(drawn(0));
    press(Qt::Key_End);
    EXPECT_TRUE(in_sight(1'000'000));
    EXPECT_TRUE(drawn(1'000'000));
    EXPECT_EQ(page().horizontalScrollBar()->value(), page().horizontalScrollBar()->maximum());
    press(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(copied().size(), 1'000'001);
}

TEST_F(edid_text, is_selected_by_the_mouse) {
    show("00 FF FF //7\r\n\r\n01 02\r\n");
    drag(before(3), before(16 + 2));
    EXPECT_EQ(selected(), "FF FF //7\n\n01");
    EXPECT_EQ(copied(), "FF FF //7\n\n01");
    drag(before(16 + 2), before(3));
    EXPECT_EQ(selected(), "FF FF //7\n\n01");
    click(before(6));
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(page().cursor(), 6U);
    click(before(9), Qt::ShiftModifier);
    EXPECT_EQ(selected(), "FF ");
    click(before(3), Qt::ShiftModifier);
    EXPECT_EQ(selected(), "FF ");
    EXPECT_EQ(page().cursor(), 3U);
}

TEST_F(edid_text, is_selected_by_words_and_lines) {
    show("00 AB CD //7\r\n01 02\r\n");
    const QPoint at = page().place_of(4).center();
    QTest::mouseDClick(window(), Qt::LeftButton, Qt::NoModifier, in_window(at));
    EXPECT_EQ(selected(), "AB");
    click(at);
    EXPECT_EQ(selected(), "00 AB CD //7\n");
}

TEST_F(edid_text, scrolls_with_a_selection_beyond_its_edge) {
    show_lines(200);
    const QPoint below(page().viewport()->width() / 2, page().viewport()->height() + 20);
    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, in_window(before(0)));
    QTest::mouseMove(window(), in_window(below));
    EXPECT_TRUE(wait_until([&] { return page().verticalScrollBar()->value() > 20; }, 20000));
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, in_window(below));
    EXPECT_TRUE(selected().startsWith("line 0\n"));
    EXPECT_TRUE(selected().contains("\nline 30\n"));
    const int value = page().verticalScrollBar()->value();
    QTest::qWait(200);
    EXPECT_EQ(page().verticalScrollBar()->value(), value);
}

TEST_F(edid_text, is_selected_by_keys) {
    show("00 FF\r\n01 02 03\r\nx\r\n");
    page().setFocus();
    press(Qt::Key_Right);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "0");
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "0 FF\n01");
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "0 FF\n01 02 03");
    press(Qt::Key_Home);
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(page().cursor(), 7U);
    press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selected(), "01 ");
    press(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selected(), "00 FF\n");
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(), "00 FF\n01 02 03\nx\n");
    QApplication::clipboard()->clear();
    press(Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "00 FF\n01 02 03\nx\n");
}

TEST_F(edid_text, keeps_the_column_over_a_short_line) {
    show("000000\r\n1\r\n222222\r\n");
    page().setFocus();
    press(Qt::Key_End);
    press(Qt::Key_Down);
    EXPECT_EQ(page().cursor(), 9U);
    press(Qt::Key_Down);
    EXPECT_EQ(page().cursor(), 17U);
}

TEST_F(edid_text, is_paged_through_to_its_end) {
    show_lines(100);
    page().setFocus();
    const int in_sight_at_once = page().verticalScrollBar()->pageStep();
    press(Qt::Key_PageDown);
    EXPECT_EQ(page().verticalScrollBar()->value(), in_sight_at_once);
    for (int i = 0; i < 10; ++i)
        press(Qt::Key_PageDown);
    EXPECT_EQ(page().lines().line_at(page().cursor()), 100U);
    EXPECT_TRUE(in_sight(page().cursor()));
    for (int i = 0; i < 11; ++i)
        press(Qt::Key_PageUp);
    EXPECT_EQ(page().cursor(), 0U);
    EXPECT_EQ(page().verticalScrollBar()->value(), 0);
}

TEST_F(edid_text, keeps_its_place_while_it_grows_and_shows_a_new_text_from_the_top) {
    show_lines(100);
    page().setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Down, Qt::ShiftModifier);
    page().verticalScrollBar()->setValue(40);
    desk().workbench.txt_write.text += "one more\r\n";
    driver().click("lab_edid_src");
    EXPECT_EQ(page().verticalScrollBar()->value(), 40);
    EXPECT_EQ(selected(), "line 1\n");
    EXPECT_TRUE(driver().text("txt_write").endsWith("\none more\n"));
    show_lines(90);
    EXPECT_EQ(page().verticalScrollBar()->value(), 0);
    EXPECT_EQ(selected(), "");
}

TEST_F(edid_text, is_never_drawn_from_a_deleted_text) {
    show_lines(1000);
    press(Qt::Key_A, Qt::ControlModifier);
    page().verticalScrollBar()->setValue(900);
    // before the window is updated
    desk().workbench.txt_write.text = "short";
    page().viewport()->grab();
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(driver().text("txt_write"), "short");
}

TEST_F(edid_text, does_not_zoom) {
    show_lines(100);
    const QFont font = page().font();
    const QPointF at(page().viewport()->rect().center());
    QWheelEvent turn(at, page().viewport()->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::ControlModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(page().viewport(), &turn);
    EXPECT_EQ(page().font(), font);
    EXPECT_GT(page().verticalScrollBar()->value(), 0);
}

TEST_F(edid_text, has_a_menu_with_copy_and_select_all) {
    show("00 FF\r\n");
    const auto menu = [&]() -> QMenu& {
        const QPoint at(20, 20);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, at, page().viewport()->mapToGlobal(at));
        QApplication::sendEvent(page().viewport(), &asked);
        return dynamic_cast<QMenu&>(*QApplication::activePopupWidget());
    };
    QMenu& first = menu();
    EXPECT_FALSE(first.actions().first()->isEnabled());
    first.actions().last()->trigger();
    first.close();
    EXPECT_EQ(selected(), "00 FF\n");
    QApplication::clipboard()->clear();
    QMenu& second = menu();
    second.actions().first()->trigger();
    second.close();
    EXPECT_EQ(QApplication::clipboard()->text(), "00 FF\n");
}

} // namespace

} // namespace desk::gui
