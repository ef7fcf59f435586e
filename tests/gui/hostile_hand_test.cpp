// A hand that holds keys and buttons down while windows open and close, and that is quicker than the desk.

#include "bench_fixture.h"
#include "holding_hand.h"

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

/// Does `work` over every box that comes up, and closes it.
class box_watch : public QObject {
public:
    explicit box_watch(std::function<void(QMessageBox&)> work = [](QMessageBox&) {}) : work_(std::move(work)) {
        qApp->installEventFilter(this);
    }

    QStringList texts;

    bool eventFilter(QObject* watched, QEvent* e) override {
        auto* const box = qobject_cast<QMessageBox*>(watched);
        if (box == nullptr || e->type() != QEvent::Show) return false;
        texts << box->text();
        // a hundred boxes over each other would never end
        if (texts.size() > 5) throw std::runtime_error("box upon box");
        QTimer::singleShot(0, box, [this, box] {
            const auto has_the_keys = [box] { return QGuiApplication::focusWindow() == box->windowHandle(); };
            EXPECT_TRUE(wait_until(has_the_keys, 5000));
            work_(*box);
            if (box->isVisible()) box->reject();
        });
        return false;
    }

private:
    std::function<void(QMessageBox&)> work_;
};

class hostile_hand : public bench {
protected:
    hostile_hand() {
        plug_generator();
        start();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&program->main_window()));
    }

    holding_hand held() { return holding_hand(program->main_window()); }

    /// The sliders of the color settings, with what the generator has in them.
    QScrollBar& open_sliders() {
        const hand h = operator_hand();
        h.click("cmd_pattern");
        h.click_row("lstv_pattern", 13);
        h.click("cmd_download");
        auto& bar = h.find<QScrollBar>("hsr_color_setting_0");
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
        operator_hand().find(name).setFocus(Qt::TabFocusReason);
        // a window under a box gets the keys back a little later
        ASSERT_TRUE(wait_until([name] { return holding_hand::focused() == name; }, 5000));
    }

    /// The sets and queries with these letters that the generator has heard since it was last asked.
    int heard_commands(const QString& letters) {
        return static_cast<int>(generator->commands().filter(QRegularExpression("^" + letters)).size());
    }

    /// For as long as the toolkit would repeat what is held.
    static void let_time_go_by() { QTest::qWait(800); }

    static bool is_a_box_open() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr; }
};

class pressed_slider : public hostile_hand, public ::testing::WithParamInterface<QStyle::SubControl> {};

TEST_P(pressed_slider, is_let_go_by_the_box_that_it_opens) {
    QScrollBar& bar = open_sliders();
    operator_hand().click("cmd_disconn");
    const QPoint at = place_on(bar, GetParam());
    const int before = bar.value();
    bool was_down = true;
    box_watch boxes([&](QMessageBox&) {
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
    operator_hand().click("cmd_conn");
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

TEST_F(hostile_hand, a_slider_goes_where_the_keys_point) {
    QScrollBar& bar = open_sliders();
    focus("hsr_color_setting_0");
    const std::vector<std::tuple<Qt::Key, int, QString>> moves = {
        {Qt::Key_Right, 129, "CRR129"}, {Qt::Key_Up, 130, "CRR130"},     {Qt::Key_Left, 129, "CRR129"},
        {Qt::Key_Down, 128, "CRR128"},  {Qt::Key_PageUp, 148, "CRR148"}, {Qt::Key_PageDown, 128, "CRR128"},
        {Qt::Key_Home, 0, "CRR000"},    {Qt::Key_End, 255, "CRR255"}};
    ASSERT_EQ(bar.value(), 128);
    generator->commands();
    for (const auto& [key, value, command] : moves) {
        holding_hand::tap(key);
        EXPECT_EQ(bar.value(), value);
        EXPECT_EQ(generator->commands_up_to(command), QStringList{command});
    }
}

TEST_F(hostile_hand, a_held_arrow_key_on_a_slider_opens_one_box) {
    open_sliders();
    operator_hand().click("cmd_disconn");
    focus("hsr_color_setting_0");
    bool stays = false;
    box_watch boxes([&](QMessageBox&) {
        holding_hand::repeat(Qt::Key_Right, 20);
        stays = is_a_box_open();
        holding_hand::release(Qt::Key_Right);
    });
    holding_hand::press(Qt::Key_Right);
    EXPECT_TRUE(stays);
    EXPECT_EQ(boxes.texts.size(), 1);
}

TEST_F(hostile_hand, a_letter_and_a_click_within_its_delay_start_one_walk) {
    const hand h = operator_hand();
    h.click("cmd_timing");
    for (const int ms : {20, 50, 90, 150, 200}) {
        generator->commands();
        generator->tell("delay 400");
        QTimer::singleShot(ms, &program->main_window(), [&] { h.click("cmd_run"); });
        holding_hand::tap(Qt::Key_S, Qt::AltModifier);
        ASSERT_TRUE(wait_until([&] { return heard("TIM001")(); }, 5000));
        ASSERT_TRUE(wait_until([&] { return h.find("cmd_run").isEnabled(); }, 5000));
        EXPECT_EQ(heard_commands("TIM"), 1) << ms;
    }
}

TEST_F(hostile_hand, a_letter_presses_no_button_that_is_dead_by_then) {
    const hand h = operator_hand();
    h.click("cmd_fav_timing");
    for (const int ms : {20, 60, 100, 200}) {
        generator->commands();
        generator->tell("delay 400");
        QTimer::singleShot(ms, &program->main_window(), [] { holding_hand::tap(Qt::Key_W, Qt::AltModifier); });
        holding_hand::tap(Qt::Key_S, Qt::AltModifier);
        ASSERT_TRUE(wait_until([&] { return h.find("cmd_run").isEnabled(); }, 60000));
        EXPECT_EQ(heard_commands("FT\\+999"), 0) << ms;
    }
}

TEST_F(hostile_hand, a_held_letter_presses_its_button_once) {
    const hand h = operator_hand();
    h.click("cmd_timing");
    generator->commands();
    holding_hand::press(Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(wait_until([&] { return h.find("cmd_run").isEnabled() && heard("TIM001")(); }, 5000));
    for (int i = 0; i < 5; ++i) {
        holding_hand::repeat(Qt::Key_S, 1, Qt::AltModifier);
        QTest::qWait(1);
    }
    holding_hand::release(Qt::Key_S, Qt::AltModifier);
    let_time_go_by();
    EXPECT_EQ(heard_commands("TIM"), 1);
}

TEST_F(hostile_hand, enter_held_on_erase_erases_nothing) {
    operator_hand().click("cmd_edid");
    const QByteArray sink = generator->sink(1);
    focus("cmd_erase");
    bool stays = false;
    bool default_is_no = false;
    box_watch boxes([&](QMessageBox& box) {
        default_is_no =
            box.defaultButton() == box.button(QMessageBox::No) && box.escapeButton() == box.button(QMessageBox::No);
        holding_hand::repeat(Qt::Key_Return, 10);
        // others count no more while it is held
        holding_hand::tap(Qt::Key_Y);
        holding_hand::tap(Qt::Key_Y, Qt::AltModifier);
        QTest::mouseClick(box.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          box.button(QMessageBox::Yes)->mapTo(&box, QPoint(5, 5)));
        let_time_go_by();
        stays = is_a_box_open();
        holding_hand::release(Qt::Key_Return);
        holding_hand::tap(Qt::Key_Return);
    });
    holding_hand::press(Qt::Key_Return);
    holding_hand::repeat(Qt::Key_Return, 10);
    EXPECT_TRUE(default_is_no);
    EXPECT_TRUE(stays);
    EXPECT_EQ(boxes.texts.size(), 1);
    EXPECT_EQ(heard_commands("ERS"), 0);
    EXPECT_EQ(generator->sink(1), sink);
}

TEST_F(hostile_hand, enter_held_in_save_overwrites_nothing) {
    put_file("kept.hex", "kept");
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_read");
    std::vector<seen_dialog> dialogs;
    bool stays = false;
    box_watch boxes([&](QMessageBox& box) {
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
        EXPECT_EQ(box.escapeButton(), box.button(QMessageBox::Cancel));
        holding_hand::repeat(Qt::Key_Return, 10);
        stays = is_a_box_open();
        holding_hand::release(Qt::Key_Return);
        // No asks for another name
        answer_next_file_dialog(dialogs, "");
        holding_hand::tap(Qt::Key_Return);
    });
    answer_next_file_dialog(dialogs, directory.filePath("kept.hex"));
    // the key that takes the name stays down
    focus("txt_read");
    holding_hand::press(Qt::Key_Return);
    h.click("cmd_save_read");
    EXPECT_TRUE(stays);
    EXPECT_EQ(dialogs.size(), 2U);
    EXPECT_EQ(file("kept.hex"), QByteArray("kept"));
}

TEST_F(hostile_hand, a_held_key_leaves_an_error_to_be_read) {
    const hand h = operator_hand();
    h.click("cmd_timing");
    h.click("cmd_disconn");
    // Space works a button when it comes up: it is held over the list, and the mouse opens the box
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
        bool stays = false;
        bool goes = false;
        box_watch boxes([&](QMessageBox& box) {
            holding_hand::repeat(key, 10);
            stays = box.isVisible();
            holding_hand::release(key);
            holding_hand::tap(key);
            goes = !box.isVisible();
        });
        focus("lstv_timing");
        holding_hand::press(key);
        h.click("cmd_run");
        EXPECT_TRUE(stays) << key;
        EXPECT_TRUE(goes) << key;
        EXPECT_EQ(boxes.texts.size(), 1) << key;
    }
}

TEST_F(hostile_hand, a_key_whose_release_is_lost_answers_a_box_when_it_comes_again) {
    operator_hand().click("cmd_timing");
    operator_hand().click("cmd_disconn");
    bool goes = false;
    box_watch boxes([&](QMessageBox& box) {
        holding_hand::tap(Qt::Key_Return);
        goes = !box.isVisible();
    });
    focus("cmd_run");
    holding_hand::press(Qt::Key_Return);
    EXPECT_TRUE(goes);
}

TEST_F(hostile_hand, a_box_does_not_wait_for_ever_for_a_key_whose_release_is_lost) {
    operator_hand().click("cmd_timing");
    operator_hand().click("cmd_disconn");
    bool goes = false;
    box_watch boxes([&](QMessageBox& box) {
        goes = wait_until(
            [&] {
                holding_hand::tap(Qt::Key_Escape);
                return !box.isVisible();
            },
            10000);
    });
    focus("cmd_run");
    holding_hand::press(Qt::Key_Return);
    EXPECT_TRUE(goes);
}

TEST_F(hostile_hand, the_second_half_of_a_double_click_answers_no_box) {
    const hand h = operator_hand();
    h.click("cmd_timing");
    h.click("cmd_disconn");
    bool stays = false;
    bool goes = false;
    box_watch boxes([&](QMessageBox& box) {
        QAbstractButton& ok = *box.button(QMessageBox::Ok);
        // under the pointer
        box.move(box.pos() + h.find("cmd_run").mapToGlobal(QPoint(8, 8)) - ok.mapToGlobal(QPoint(8, 8)));
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

TEST_F(hostile_hand, a_key_that_repeats_itself_presses_nothing) {
    const hand h = operator_hand();
    h.click("cmd_edid");
    focus("opt_edid_src_1");
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Space}) {
        holding_hand::repeat(key, 3);
        EXPECT_TRUE(desk().workbench.opt_edid_src[0].value) << key;
    }
    focus("cmd_read");
    generator->commands();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        holding_hand::repeat(key, 5);
    EXPECT_EQ(generator->commands(), QStringList());

    h.click("cmd_fav_timing");
    focus("lstv_timing");
    holding_hand::press(Qt::Key_Space);
    holding_hand::repeat(Qt::Key_Space, 4);
    holding_hand::release(Qt::Key_Space);
    EXPECT_TRUE(desk().catalogue.lstv_timing.row(1).checked);
}

TEST_F(hostile_hand, text_is_typed_by_a_held_key) {
    open_sliders();
    focus("txt_color_setting_0");
    holding_hand::press(Qt::Key_1);
    holding_hand::repeat(Qt::Key_1, 2);
    holding_hand::release(Qt::Key_1);
    EXPECT_EQ(desk().desk_frame.txt_color_setting[0].text.get(), "111");
    generator->commands();
    holding_hand::press(Qt::Key_Return);
    holding_hand::repeat(Qt::Key_Return, 5);
    holding_hand::release(Qt::Key_Return);
    EXPECT_EQ(generator->commands_up_to("CRR111"), QStringList{"CRR111"});
}

TEST_F(hostile_hand, a_button_that_is_down_when_a_box_opens_is_let_go) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    h.click("cmd_disconn");
    bool was_down = true;
    box_watch boxes([&](QMessageBox&) { was_down = h.find<QAbstractButton>("cmd_reset").isDown(); });
    held().press_mouse("cmd_reset", {8, 8});
    ASSERT_TRUE(h.find<QAbstractButton>("cmd_reset").isDown());
    // the keyboard opens the box
    holding_hand::tap(Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(boxes.texts.size(), 1);
    EXPECT_FALSE(was_down);
    held().release_mouse("cmd_reset", {8, 8});
    EXPECT_EQ(boxes.texts.size(), 1);
}

} // namespace

} // namespace desk::gui
