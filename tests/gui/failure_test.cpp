// How the program tells of what ends it, and of a port that it can't open.

#include "bench_fixture.h"
#include "runtime/failure.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace desk::gui {

namespace {

class failing_start : public bench {
protected:
    /// Starts the desk, which must fail, and gives what its box says.
    QString text_of_failure() {
        std::vector<seen_box> boxes;
        answer_next_box(boxes, QMessageBox::Ok);
        EXPECT_FALSE(program->start());
        EXPECT_EQ(program->exit_status(), 1);
        EXPECT_FALSE(program->main_window().isVisible());
        return boxes.size() == 1 ? boxes[0].text : "";
    }
};

TEST_F(failing_start, the_settings_file_is_missing) {
    remove_file("marlo_rs232.ini");
    EXPECT_TRUE(text_of_failure().startsWith("Run-time error '53':\n\nFile not found\n\nReading the settings file"));
    EXPECT_TRUE(file("marlo_rs232.ini").isEmpty());
}

TEST_F(failing_start, the_settings_file_is_malformed) {
    put_file("marlo_rs232.ini", "COM1\r\n");
    EXPECT_TRUE(text_of_failure().startsWith("Run-time error '13':\n\nType mismatch"));
    EXPECT_EQ(file("marlo_rs232.ini"), "COM1\r\n");
}

TEST_F(failing_start, the_settings_file_is_short) {
    put_file("marlo_rs232.ini", "0\r\n\"\"\r\n");
    EXPECT_TRUE(text_of_failure().startsWith("Run-time error '62':\n\nInput past end of file"));
}

TEST_F(failing_start, the_catalogue_is_missing) {
    put_file("marlo_rs232.ini", QByteArray("0\r\n") + QByteArray("\"\"\r\n").repeated(10) + "0\r\n0\r\n0\r\n");
    remove_file("timing_pattern.ini");
    EXPECT_TRUE(text_of_failure().contains("Reading the catalogue timing_pattern.ini"));
}

class unopened_port : public bench {};

TEST_F(unopened_port, is_told_before_the_window_appears_and_the_desk_goes_on) {
#ifndef _WIN32
    // on Windows no file can have the name of a port; there a port without a device serves as well
    put_file("com1", "no terminal");
#endif
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    start();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "RS232 can not work on COM 1: !");
    EXPECT_FALSE(desk().exchange.rs232_connected);
    EXPECT_EQ(operator_hand().find("cmd_disconn").palette().color(QPalette::Button), QColor(255, 0, 0));
}

class failure_while_running : public bench {};

TEST_F(failure_while_running, ends_the_program_and_rewrites_nothing) {
    put_file("marlo_rs232.ini", QByteArray("0\r\n") + QByteArray("\"\"\r\n").repeated(10) + "0\r\n0\r\n0\r\n");
    put_file("timing_pattern.ini", "1\n\"T01 no clock\",100,50,1,1,+,100,50,1,1,+,0\n1\n\"P01\"\n");
    start();
    remove_file("marlo_rs232.ini");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    operator_hand().click("cmd_timing");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_TRUE(boxes[0].text.startsWith("Run-time error '11':\n\nDivision by zero\n\n"));
    EXPECT_TRUE(program->gate().over());
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_TRUE(file("marlo_rs232.ini").isEmpty());
}

TEST_F(failure_while_running, in_a_nested_event_ends_the_suspended_procedures_too) {
    plug_generator();
    start();
    const hand h = operator_hand();
    generator->tell("silent");
    h.click("cmd_timing");
    bool came_back = false;
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    h.when(heard("TIM001"), [&] {
        program->gate().run([] { throw runtime_failure(failure::overflow, "a nested event"); });
        came_back = true;
    });
    h.click("cmd_run");
    EXPECT_TRUE(came_back);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "Run-time error '6':\n\nOverflow\n\na nested event.\n\nThe program ends now.");
    EXPECT_TRUE(program->gate().over());
    EXPECT_FALSE(desk().desk_frame.cmd_run.enabled);
}

class box_of_a_failure : public bench {
protected:
    box_of_a_failure() {
        plug_generator();
        start();
    }
    /// Lets the program fail, and does something in its box before it is closed.
    void fail(const std::function<void(QMessageBox&)>& work) {
        bool came = false;
        std::function<void()> look = [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return QTimer::singleShot(10, qApp, look);
            came = true;
            work(*box);
            box->button(QMessageBox::Ok)->click();
        };
        QTimer::singleShot(10, qApp, look);
        program->gate().run([] { throw runtime_failure(failure::overflow, "a click"); });
        EXPECT_TRUE(came);
    }
};

TEST_F(box_of_a_failure, says_where_the_work_is_and_how_to_go_on) {
    operator_hand().click("cmd_edid");
    operator_hand().click("cmd_read");
    fail([](const QMessageBox& box) {
        const QStringList parts = box.text().split("\n\n");
        ASSERT_EQ(parts.size(), 6) << qPrintable(box.text());
        EXPECT_EQ(parts.mid(0, 4),
                  (QStringList{"Run-time error '6':", "Overflow", "a click.", "The program ends now."}));
        EXPECT_TRUE(parts[4].startsWith("The EDID of the READ window is kept in the file ")) << qPrintable(parts[4]);
        EXPECT_TRUE(parts[4].contains("rescued_read.hex"));
        EXPECT_EQ(parts[5],
                  "To continue, start the program again and OPEN the file. If the same error occurs again, the "
                  "program edid_report prints what can be decoded.");
    });
    EXPECT_TRUE(file("rescued_read.hex").startsWith("00 FF"));
}

TEST_F(box_of_a_failure, speaks_of_no_file_where_there_was_no_work) {
    fail([](const QMessageBox& box) { EXPECT_TRUE(box.text().endsWith("The program ends now.")); });
}

TEST_F(box_of_a_failure, has_a_text_that_is_selected_and_copied) {
    fail([](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), box.text());
        auto* const said = box.findChild<QLabel*>("qt_msgbox_label");
        ASSERT_NE(said, nullptr);
        EXPECT_TRUE(said->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        EXPECT_TRUE(said->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
        said->setSelection(0, 14);
        QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), "Run-time error");
    });
}

} // namespace

} // namespace desk::gui
