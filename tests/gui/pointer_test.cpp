// The mouse pointer is busy while the generator is asked, and at no other time.

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

class pointer : public bench {
protected:
    pointer() { plug_generator(); }

    /// Notes the pointer over the next message box, and presses OK.
    void press_ok() {
        auto* const look = new QTimer(qApp);
        QObject::connect(look, &QTimer::timeout, look, [this, look] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            delete look;
            busy_over_box = is_busy();
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        });
        look->start(10);
    }

    std::optional<bool> busy_over_box;
};

TEST_F(pointer, is_busy_as_long_as_the_generator_is_asked) {
    start();
    const hand h = operator_hand();
    h.click("cmd_setup");
    EXPECT_FALSE(is_busy());
    generator->tell("silent");
    bool meanwhile = false;
    bool in_another_event = false;
    h.when(heard("TIM999"), [&] {
        meanwhile = is_busy();
        h.click("cmd_timing");
        in_another_event = is_busy();
    });
    h.click("cmd_refresh");
    EXPECT_TRUE(meanwhile);
    EXPECT_TRUE(in_another_event);
    EXPECT_FALSE(is_busy());
}

TEST_F(pointer, is_the_usual_one_over_a_box_and_after_it) {
    start();
    const hand h = operator_hand();
    h.click("cmd_pattern");
    h.click_row("lstv_pattern", 13);
    generator->tell("silent");
    press_ok();
    h.click("cmd_download");
    EXPECT_EQ(busy_over_box, false);
    EXPECT_FALSE(is_busy());
}

TEST_F(pointer, is_busy_in_a_window_above_too_while_that_one_asks) {
    put_file("display.bin", generator->sink(1));
    start();
    const hand h = operator_hand();
    h.click("cmd_edid");
    std::vector<seen_dialog> dialogs;
    answer_next_file_dialog(dialogs, directory.filePath("display.bin"));
    h.click("cmd_load");
    bool when_open = true;
    bool at_work = false;
    bool when_done = true;
    in_next_window("frm_diag", [&](const hand& diag) {
        when_open = is_busy();
        diag.when(is_busy, [&] { at_work = true; });
        diag.click("cmd_run");
        when_done = is_busy();
        diag.click("cmd_ok");
    });
    h.click("cmd_w_auto");
    EXPECT_FALSE(when_open);
    EXPECT_TRUE(at_work);
    EXPECT_FALSE(when_done);
    EXPECT_FALSE(is_busy());
}

TEST_F(pointer, is_the_usual_one_when_a_failure_is_told) {
    start();
    const hand h = operator_hand();
    h.click("cmd_timing");
    generator->tell("silent");
    press_ok();
    h.when(heard("TIM001"),
           [this] { program->gate().run([] { throw runtime_failure(failure::overflow, "a nested event"); }); });
    h.click("cmd_run");
    EXPECT_EQ(busy_over_box, false);
    EXPECT_FALSE(is_busy());
}

TEST_F(pointer, is_the_usual_one_when_the_window_is_closed_meanwhile) {
    start();
    const hand h = operator_hand();
    h.click("cmd_timing");
    generator->tell("silent");
    bool meanwhile = false;
    h.when(heard("TIM001"), [&] {
        meanwhile = is_busy();
        program->main_window().close();
    });
    h.click("cmd_run");
    EXPECT_TRUE(meanwhile);
    EXPECT_FALSE(is_busy());
}

} // namespace

} // namespace desk::gui
