// The mouse cursor is busy only while the desk waits for the generator.

#include "bench_fixture.h"
#include "runtime/failure.h"

#include <QApplication>
#include <QCursor>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace desk::gui {

namespace {

bool is_busy() {
    const QCursor* const over_all = QApplication::overrideCursor();
    return over_all != nullptr && over_all->shape() == Qt::BusyCursor;
}

class cursor : public bench {
protected:
    cursor() { plug_generator(); }

    /// Records the cursor over the next message box, and presses OK.
    void press_ok() {
        auto* const poll = new QTimer(qApp);
        QObject::connect(poll, &QTimer::timeout, poll, [this, poll] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            delete poll;
            busy_over_box = is_busy();
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        });
        poll->start(10);
    }

    std::optional<bool> busy_over_box;
};

TEST_F(cursor, is_busy_while_waiting_for_the_generator) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    EXPECT_FALSE(is_busy());
    generator->command("silent");
    bool meanwhile = false;
    bool in_another_event = false;
    ui.when(heard("TIM999"), [&] {
        meanwhile = is_busy();
        ui.click("cmd_timing");
        in_another_event = is_busy();
    });
    ui.click("cmd_refresh");
    EXPECT_TRUE(meanwhile);
    EXPECT_TRUE(in_another_event);
    EXPECT_FALSE(is_busy());
}

TEST_F(cursor, is_normal_during_and_after_a_box) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 13);
    generator->command("silent");
    press_ok();
    ui.click("cmd_download");
    EXPECT_EQ(busy_over_box, false);
    EXPECT_FALSE(is_busy());
}

TEST_F(cursor, is_busy_in_a_modal_window_during_its_exchange) {
    put_file("display.bin", generator->sink(1));
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    std::vector<seen_dialog> dialogs;
    answer_next_file_dialog(dialogs, directory.filePath("display.bin"));
    ui.click("cmd_load");
    bool when_open = true;
    bool at_work = false;
    bool when_done = true;
    in_next_window("frm_diag", [&](const ui_driver& diag) {
        when_open = is_busy();
        diag.when(is_busy, [&] { at_work = true; });
        diag.click("cmd_run");
        when_done = is_busy();
        diag.click("cmd_ok");
    });
    ui.click("cmd_w_auto");
    EXPECT_FALSE(when_open);
    EXPECT_TRUE(at_work);
    EXPECT_FALSE(when_done);
    EXPECT_FALSE(is_busy());
}

TEST_F(cursor, is_normal_when_a_failure_is_reported) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    generator->command("silent");
    press_ok();
    ui.when(heard("TIM001"),
            [this] { program->gate().run([] { throw runtime_failure(failure::overflow, "a nested event"); }); });
    ui.click("cmd_run");
    EXPECT_EQ(busy_over_box, false);
    EXPECT_FALSE(is_busy());
}

TEST_F(cursor, is_normal_when_the_window_is_closed_meanwhile) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    generator->command("silent");
    bool meanwhile = false;
    ui.when(heard("TIM001"), [&] {
        meanwhile = is_busy();
        program->main_window().close();
    });
    ui.click("cmd_run");
    EXPECT_TRUE(meanwhile);
    EXPECT_FALSE(is_busy());
}

} // namespace

} // namespace desk::gui
