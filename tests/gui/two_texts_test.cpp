// The READ and WRITE texts side by side: scrolled together, and highlighted where they differ.

#include "bench_fixture.h"
#include "generator/sink_edids.h"
#include "qt/appearance.h"
#include "qt/scheme.h"
#include "qt/text_page.h"

#include <QDir>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTest>

#include <string>

namespace desk::gui {

namespace {

class two_texts : public bench {
protected:
    two_texts() {
        plug_generator();
        start();
        driver().click("cmd_edid");
    }

    qt::text_page& write() { return driver().find<qt::text_page>("txt_write"); }
    qt::text_page& read() { return driver().find<qt::text_page>("txt_read"); }
    static int line_of(const qt::text_page& page) { return page.verticalScrollBar()->value(); }
    void follow() { driver().click("lab_edid_src"); }
    void show(const std::string& in_write, const std::string& in_read) {
        desk().workbench.txt_write.text = in_write;
        desk().workbench.txt_read.text = in_read;
        follow();
    }
    static std::string lines(int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "00 //0\r\n";
        return text;
    }
    void open_bytes(const QByteArray& bytes) {
        put_file("file.bin", bytes);
        std::vector<seen_dialog> dialogs;
        answer_next_file_dialog(dialogs, QDir::toNativeSeparators(directory.filePath("file.bin")));
        driver().click("cmd_load");
    }
    static QByteArray first_edid() {
        const bytes edid = first_sink_edid(1);
        return {reinterpret_cast<const char*>(edid.data()), static_cast<qsizetype>(edid.size())};
    }
    /// The sink's EDID with three bytes changed.
    static QByteArray other_edid() {
        QByteArray edid = first_edid();
        for (const int at : {0x12, 0x13, 0xFE})
            edid[at] = static_cast<char>(edid.at(at) + 1);
        return edid;
    }
    static QStringList marked(const qt::text_page& page) {
        QStringList texts;
        for (const text_lines::range& m : page.marks())
            texts << qt::shown_text(page.lines().text().substr(m.begin, m.end - m.begin));
        return texts;
    }
    /// The digits of some bytes as written in both texts.
    static QStringList digits(const QByteArray& edid) {
        QStringList texts;
        for (const int at : {0x12, 0x13, 0xFE})
            texts << QString("%1").arg(static_cast<std::uint8_t>(edid.at(at)), 2, 16, QChar('0')).toUpper();
        return texts;
    }
    static QColor background_of(qt::text_page& page, std::size_t byte) {
        const QRect place = page.place_of(byte);
        const QImage seen = page.viewport()->grab().toImage();
        const double scale = page.devicePixelRatioF();
        return seen.pixelColor(int(place.left() * scale), int(place.top() * scale));
    }
    void compare() {
        open_bytes(other_edid());
        driver().click("cmd_read");
        driver().click("cmd_compare");
    }
};

TEST_F(two_texts, scroll_together) {
    show(lines(60), lines(60));
    write().verticalScrollBar()->setValue(7);
    EXPECT_EQ(line_of(read()), 7);
    read().verticalScrollBar()->setValue(3);
    EXPECT_EQ(line_of(write()), 3);
    QTest::keyClick(&write(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_GT(line_of(write()), 7);
    EXPECT_EQ(line_of(read()), line_of(write()));
}

TEST_F(two_texts, of_different_length_stop_at_their_own_ends) {
    show(lines(100), lines(60));
    QScrollBar& longer = *write().verticalScrollBar();
    longer.setValue(longer.maximum());
    EXPECT_EQ(line_of(write()), longer.maximum());
    EXPECT_EQ(line_of(read()), read().verticalScrollBar()->maximum());
    read().verticalScrollBar()->setValue(2);
    EXPECT_EQ(line_of(write()), 2);
    show(lines(100), "");
    longer.setValue(50);
    EXPECT_EQ(line_of(write()), 50);
}

TEST_F(two_texts, of_16_megabytes_scroll_instantly) {
    show(lines(1'500'000), lines(1'000'000));
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 100; ++i)
        write().verticalScrollBar()->setValue(i * 9000);
    EXPECT_EQ(line_of(read()), line_of(write()));
    EXPECT_LT(time.elapsed(), 2000);
}

TEST_F(two_texts, mark_what_comp_finds) {
    compare();
    EXPECT_EQ(marked(write()), digits(other_edid()));
    EXPECT_EQ(marked(read()), digits(first_edid()));
    EXPECT_EQ(write().accessibleDescription(), "3 bytes differ, the first at 0x12");
    EXPECT_EQ(read().accessibleDescription(), "3 bytes differ, the first at 0x12");
}

TEST_F(two_texts, mark_only_the_background) {
    const std::size_t at = 2 * 29 + 2 * 3; // byte 0x12
    compare();
    driver().click("cmd_ok");
    const QColor difference = qt::colors_of(write().palette()).difference;
    EXPECT_EQ(background_of(write(), at), difference);
    EXPECT_EQ(background_of(read(), at), difference);
    EXPECT_NE(background_of(write(), 0), difference);
    EXPECT_GE(qt::contrast(difference, write().palette().color(QPalette::Text)), qt::readable_contrast);
}

TEST_F(two_texts, mark_what_a_failed_verify_finds) {
    open_bytes(other_edid());
    driver().click("cmd_verify");
    EXPECT_EQ(marked(write()), digits(other_edid()));
    EXPECT_TRUE(marked(read()).isEmpty()) << "nothing was read into the window";
}

TEST_F(two_texts, lose_their_marks_with_the_next_change) {
    compare();
    driver().click("cmd_ok");
    driver().click("cmd_read");
    EXPECT_TRUE(marked(write()).isEmpty());
    EXPECT_TRUE(marked(read()).isEmpty());
    EXPECT_FALSE(write().accessibleDescription().contains("differ,"));

    compare();
    driver().click("cmd_ok");
    driver().click("cmd_clear_file");
    EXPECT_TRUE(marked(read()).isEmpty());

    compare();
    driver().click("cmd_ok");
    open_bytes(first_edid());
    EXPECT_TRUE(marked(read()).isEmpty());
    driver().click("cmd_compare");
    EXPECT_TRUE(marked(write()).isEmpty()) << "both sides are equal now";
}

} // namespace

} // namespace desk::gui
