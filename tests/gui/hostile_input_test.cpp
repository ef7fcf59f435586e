// Keys and buttons held while windows open and close, and input faster than the desk.

#include "bench_fixture.h"
#include "raw_input.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTimer>

#include <functional>
#include <stdexcept>
#include <tuple>
#include <vector>

namespace desk::gui {

namespace {

/// Calls `work` on every message box and closes it.
class box_handler : public QObject {
public:
    explicit box_handler(std::function<void(QMessageBox&)> work = [](QMessageBox&) {}) : work_(std::move(work)) {
        qApp->installEventFilter(this);
    }

    QStringList texts;

    bool eventFilter(QObject* watched, QEvent* e) override {
        auto* const box = qobject_cast<QMessageBox*>(watched);
        if (box == nullptr || e->type() != QEvent::Show) return false;
        texts << box->text();
        // a hundred nested boxes would never end
        if (texts.size() > 5) throw std::runtime_error("too many boxes");
        QTimer::singleShot(0, box, [this, box] {
            const auto gets_focus = [box] { return QGuiApplication::focusWindow() == box->windowHandle(); };
            EXPECT_TRUE(wait_until(gets_focus, 5000));
            work_(*box);
            if (box->isVisible()) box->reject();
        });
        return false;
    }

private:
    std::function<void(QMessageBox&)> work_;
};

class hostile_input : public bench {
protected:
    hostile_input() {
        plug_generator();
        start();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&program->main_window()));
    }

    raw_input held() { return raw_input(program->main_window()); }

    /// The sliders of the color settings, with the generator's values.
    QScrollBar& open_sliders() {
        const ui_driver ui = driver();
        ui.click("cmd_pattern");
        ui.click_row("lstv_pattern", 13);
        ui.click("cmd_download");
        auto& bar = ui.find<QScrollBar>("hsr_color_setting_0");
        EXPECT_TRUE(bar.isEnabled());
        return bar;
    }

    static QPoint place_on(const QScrollBar& bar, QStyle::SubControl part) {
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.orientation = bar.orientation();
        option.minimum = bar.minimum();
        option.maximum = bar.maximum();
        option.sliderPosition = option.sliderValue = bar.value();
        option.pageStep = bar.pageStep();
        option.state |= QStyle::State_Horizontal;
        return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar).center();
    }

    void focus(const char* name) {
        program->main_window().activateWindow();
        driver().find(name).setFocus(Qt::TabFocusReason);
        // a window under a box regains the focus a little later
        ASSERT_TRUE(wait_until([name] { return raw_input::focused() == name; }, 5000));
    }

    /// Number of commands with these letters since the last call.
    int heard_commands(const QString& letters) {
        return static_cast<int>(generator->commands().filter(QRegularExpression("^" + letters)).size());
    }

    /// Longer than auto-repeat would need to start.
    static void let_time_go_by() { QTest::qWait(800); }

    static bool is_a_box_open() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr; }
};

class pressed_slider : public hostile_input, public ::testing::WithParamInterface<QStyle::SubControl> {};

TEST_P(pressed_slider, is_released_by_the_box_that_it_opens) {
    QScrollBar& bar = open_sliders();
    driver().click("cmd_disconn");
    const QPoint at = place_on(bar, GetParam());
    const int before = bar.value();
    bool was_down = true;
    box_handler boxes([&](QMessageBox&) {
        let_time_go_by();
        was_down = bar.isSliderDown();
        held().release_mouse("hsr_color_setting_0", at);
    });
    held().press_mouse("hsr_color_setting_0", at);
    if (GetParam() == QStyle::SC_ScrollBarSlider) held().move_mouse("hsr_color_setting_0", at + QPoint(20, 0));
    EXPECT_EQ(boxes.texts, QStringList{"RS232 is disconnected !"});
    EXPECT_FALSE(was_down);
    EXPECT_NE(bar.value(), before);
    EXPECT_EQ(bar.value(), desk().desk_frame.hsr_color_setting[0].value());
    driver().click("cmd_conn");
    generator->commands();
    const int now = bar.value();
    let_time_go_by();
    held().move_mouse("hsr_color_setting_0", at + QPoint(40, 0));
    EXPECT_EQ(generator->commands(), QStringList());
    EXPECT_EQ(bar.value(), now);
    EXPECT_EQ(boxes.texts.size(), 1);
}

INSTANTIATE_TEST_SUITE_P(parts, pressed_slider,
                         ::testing::Values(QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine,
                                           QStyle::SC_ScrollBarAddPage, QStyle::SC_ScrollBarSlider));

TEST_F(hostile_input, a_slider_follows_the_arrow_keys) {
    QScrollBar& bar = open_sliders();
    focus("hsr_color_setting_0");
    const std::vector<std::tuple<Qt::Key, int, QString>> moves = {
        {Qt::Key_Right, 129, "CRR129"}, {Qt::Key_Up, 130, "CRR130"},     {Qt::Key_Left, 129, "CRR129"},
        {Qt::Key_Down, 128, "CRR128"},  {Qt::Key_PageUp, 148, "CRR148"}, {Qt::Key_PageDown, 128, "CRR128"},
        {Qt::Key_Home, 0, "CRR000"},    {Qt::Key_End, 255, "CRR255"}};
    ASSERT_EQ(bar.value(), 128);
    generator->commands();
    for (const auto& [key, value, command] : moves) {
        raw_input::tap(key);
        EXPECT_EQ(bar.value(), value);
        EXPECT_EQ(generator->commands_up_to(command), QStringList{command});
    }
}

TEST_F(hostile_input, a_held_arrow_key_on_a_slider_opens_one_box) {
    open_sliders();
    driver().click("cmd_disconn");
    focus("hsr_color_setting_0");
    bool stays = false;
    box_handler boxes([&](QMessageBox&) {
        raw_input::repeat(Qt::Key_Right, 20);
        stays = is_a_box_open();
        raw_input::release(Qt::Key_Right);
    });
    raw_input::press(Qt::Key_Right);
    EXPECT_TRUE(stays);
    EXPECT_EQ(boxes.texts.size(), 1);
}

TEST_F(hostile_input, a_letter_and_a_click_during_its_delay_run_one_action) {
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    for (const int ms : {20, 50, 90, 150, 200}) {
        generator->commands();
        generator->command("delay 400");
        QTimer::singleShot(ms, &program->main_window(), [&] { ui.click("cmd_run"); });
        raw_input::tap(Qt::Key_S, Qt::AltModifier);
        ASSERT_TRUE(wait_until([&] { return heard("TIM001")(); }, 5000));
        ASSERT_TRUE(wait_until([&] { return ui.find("cmd_run").isEnabled(); }, 5000));
        EXPECT_EQ(heard_commands("TIM"), 1) << ms;
    }
}

TEST_F(hostile_input, a_letter_presses_no_disabled_button) {
    const ui_driver ui = driver();
    ui.click("cmd_fav_timing");
    for (const int ms : {20, 60, 100, 200}) {
        generator->commands();
        generator->command("delay 400");
        QTimer::singleShot(ms, &program->main_window(), [] { raw_input::tap(Qt::Key_W, Qt::AltModifier); });
        raw_input::tap(Qt::Key_S, Qt::AltModifier);
        ASSERT_TRUE(wait_until([&] { return ui.find("cmd_run").isEnabled(); }, 60000));
        EXPECT_EQ(heard_commands("FT\\+999"), 0) << ms;
    }
}

TEST_F(hostile_input, a_held_letter_presses_its_button_once) {
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    generator->commands();
    raw_input::press(Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(wait_until([&] { return ui.find("cmd_run").isEnabled() && heard("TIM001")(); }, 5000));
    for (int i = 0; i < 5; ++i) {
        raw_input::repeat(Qt::Key_S, 1, Qt::AltModifier);
        QTest::qWait(1);
    }
    raw_input::release(Qt::Key_S, Qt::AltModifier);
    let_time_go_by();
    EXPECT_EQ(heard_commands("TIM"), 1);
}

TEST_F(hostile_input, enter_held_on_erase_erases_nothing) {
    driver().click("cmd_edid");
    const QByteArray sink = generator->sink(1);
    focus("cmd_erase");
    bool stays = false;
    bool default_is_no = false;
    box_handler boxes([&](QMessageBox& box) {
        default_is_no =
            box.defaultButton() == box.button(QMessageBox::No) && box.escapeButton() == box.button(QMessageBox::No);
        raw_input::repeat(Qt::Key_Return, 10);
        // ignored while it is held
        raw_input::tap(Qt::Key_Y);
        raw_input::tap(Qt::Key_Y, Qt::AltModifier);
        QTest::mouseClick(box.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          box.button(QMessageBox::Yes)->mapTo(&box, QPoint(5, 5)));
        let_time_go_by();
        stays = is_a_box_open();
        raw_input::release(Qt::Key_Return);
        raw_input::tap(Qt::Key_Return);
    });
    raw_input::press(Qt::Key_Return);
    raw_input::repeat(Qt::Key_Return, 10);
    EXPECT_TRUE(default_is_no);
    EXPECT_TRUE(stays);
    EXPECT_EQ(boxes.texts.size(), 1);
    EXPECT_EQ(heard_commands("ERS"), 0);
    EXPECT_EQ(generator->sink(1), sink);
}

TEST_F(hostile_input, enter_held_in_save_overwrites_nothing) {
    put_file("kept.hex", "kept");
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    std::vector<seen_dialog> dialogs;
    bool stays = false;
    box_handler boxes([&](QMessageBox& box) {
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
        EXPECT_EQ(box.escapeButton(), box.button(QMessageBox::Cancel));
        raw_input::repeat(Qt::Key_Return, 10);
        stays = is_a_box_open();
        raw_input::release(Qt::Key_Return);
        // No asks for another name
        answer_next_file_dialog(dialogs, "");
        raw_input::tap(Qt::Key_Return);
    });
    answer_next_file_dialog(dialogs, directory.filePath("kept.hex"));
    // the key that accepts the name stays down
    focus("txt_read");
    raw_input::press(Qt::Key_Return);
    ui.click("cmd_save_read");
    EXPECT_TRUE(stays);
    EXPECT_EQ(dialogs.size(), 2U);
    EXPECT_EQ(file("kept.hex"), QByteArray("kept"));
}

TEST_F(hostile_input, a_held_key_does_not_dismiss_an_error) {
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    ui.click("cmd_disconn");
    // a button reacts to the release of Space: hold Space over the list and open the box by mouse
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
        bool stays = false;
        bool goes = false;
        box_handler boxes([&](QMessageBox& box) {
            raw_input::repeat(key, 10);
            stays = box.isVisible();
            raw_input::release(key);
            raw_input::tap(key);
            goes = !box.isVisible();
        });
        focus("lstv_timing");
        raw_input::press(key);
        ui.click("cmd_run");
        EXPECT_TRUE(stays) << key;
        EXPECT_TRUE(goes) << key;
        EXPECT_EQ(boxes.texts.size(), 1) << key;
    }
}

TEST_F(hostile_input, a_key_with_a_lost_release_answers_a_box_when_pressed_again) {
    driver().click("cmd_timing");
    driver().click("cmd_disconn");
    bool goes = false;
    box_handler boxes([&](QMessageBox& box) {
        raw_input::tap(Qt::Key_Return);
        goes = !box.isVisible();
    });
    focus("cmd_run");
    raw_input::press(Qt::Key_Return);
    EXPECT_TRUE(goes);
}

TEST_F(hostile_input, a_box_does_not_wait_forever_for_a_lost_release) {
    driver().click("cmd_timing");
    driver().click("cmd_disconn");
    bool goes = false;
    box_handler boxes([&](QMessageBox& box) {
        goes = wait_until(
            [&] {
                raw_input::tap(Qt::Key_Escape);
                return !box.isVisible();
            },
            10000);
    });
    focus("cmd_run");
    raw_input::press(Qt::Key_Return);
    EXPECT_TRUE(goes);
}

TEST_F(hostile_input, the_second_half_of_a_double_click_answers_no_box) {
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    ui.click("cmd_disconn");
    bool stays = false;
    bool goes = false;
    box_handler boxes([&](QMessageBox& box) {
        QAbstractButton& ok = *box.button(QMessageBox::Ok);
        // under the pointer
        box.move(box.pos() + ui.find("cmd_run").mapToGlobal(QPoint(8, 8)) - ok.mapToGlobal(QPoint(8, 8)));
        const auto click = [&] {
            QTest::mouseClick(box.windowHandle(), Qt::LeftButton, Qt::NoModifier, ok.mapTo(&box, QPoint(8, 8)));
        };
        click();
        stays = box.isVisible();
        click();
        goes = !box.isVisible();
    });
    held().click_mouse("cmd_run", {8, 8});
    EXPECT_TRUE(stays);
    EXPECT_TRUE(goes);
}

TEST_F(hostile_input, auto_repeat_presses_no_button) {
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    focus("opt_edid_src_1");
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Space}) {
        raw_input::repeat(key, 3);
        EXPECT_TRUE(desk().workbench.opt_edid_src[0].value) << key;
    }
    focus("cmd_read");
    generator->commands();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        raw_input::repeat(key, 5);
    EXPECT_EQ(generator->commands(), QStringList());

    ui.click("cmd_fav_timing");
    focus("lstv_timing");
    raw_input::press(Qt::Key_Space);
    raw_input::repeat(Qt::Key_Space, 4);
    raw_input::release(Qt::Key_Space);
    EXPECT_TRUE(desk().catalogue.lstv_timing.row(1).checked);
}

TEST_F(hostile_input, auto_repeat_types_text) {
    open_sliders();
    focus("txt_color_setting_0");
    raw_input::press(Qt::Key_1);
    raw_input::repeat(Qt::Key_1, 2);
    raw_input::release(Qt::Key_1);
    EXPECT_EQ(desk().desk_frame.txt_color_setting[0].text.get(), "111");
    generator->commands();
    raw_input::press(Qt::Key_Return);
    raw_input::repeat(Qt::Key_Return, 5);
    raw_input::release(Qt::Key_Return);
    EXPECT_EQ(generator->commands_up_to("CRR111"), QStringList{"CRR111"});
}

TEST_F(hostile_input, a_pressed_button_is_released_when_a_box_opens) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    ui.click("cmd_disconn");
    bool was_down = true;
    box_handler boxes([&](QMessageBox&) { was_down = ui.find<QAbstractButton>("cmd_reset").isDown(); });
    held().press_mouse("cmd_reset", {8, 8});
    ASSERT_TRUE(ui.find<QAbstractButton>("cmd_reset").isDown());
    // the keyboard opens the box
    raw_input::tap(Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(boxes.texts.size(), 1);
    EXPECT_FALSE(was_down);
    held().release_mouse("cmd_reset", {8, 8});
    EXPECT_EQ(boxes.texts.size(), 1);
}

} // namespace

} // namespace desk::gui
