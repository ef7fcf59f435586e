// Every button of every view has a working key of its own.

#include "bench_fixture.h"
#include "controls/kinds.h"
#include "qt/access_keys.h"
#include "qt/reading_order.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <map>

namespace desk::gui {

namespace {

class access_key_of : public bench {
protected:
    access_key_of() { plug_generator(); }

    /// Each button that can be reached has a key; only the buttons of a panel row share one.
    static void expect_a_key_for_every_button(const window& w) {
        std::map<QString, const control*> seen;
        for (const control* c : w.controls()) {
            if (!qt::can_be_reached(*c)) continue;
            const QString key = qt::access_key(*c).toString();
            const bool is_button = is<button, option_button>(*c);
            if (is_button && key.isEmpty()) ADD_FAILURE() << c->full_name() << " has none";
            if (key.isEmpty()) continue;
            const auto [other, is_new] = seen.emplace(key, c);
            const bool in_a_row = c->parent != nullptr && c->parent->name == "fra_setup";
            if (!is_new && !(in_a_row && other->second->name == c->name))
                ADD_FAILURE() << qPrintable(key) << ": " << c->full_name() << " and " << other->second->full_name();
        }
        EXPECT_GE(seen.size(), 2U);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers with = Qt::AltModifier) {
        QTest::keyClick(&program->main_window(), key, with);
    }
    void show_edid_with_everything_enabled() {
        driver().click("cmd_edid");
        for (control* c : desk().form.controls())
            if (c->parent == &desk().workbench.fra_edid && is<button>(*c)) c->enabled = c->visible = true;
        driver().click("lab_edid_src"); // any event updates the window
    }
};

TEST_F(access_key_of, every_button_is_unique_in_every_view) {
    start();
    expect_a_key_for_every_button(desk().form);
    for (const char* view :
         {"cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern", "cmd_edid", "cmd_auto", "cmd_setup"}) {
        SCOPED_TRACE(view);
        driver().click(view);
        expect_a_key_for_every_button(desk().form);
        desk().about.fra_about.visible = true;
        expect_a_key_for_every_button(desk().form);
        desk().about.fra_about.visible = false;
    }
}

TEST_F(access_key_of, every_button_is_unique_with_each_pattern_that_has_settings) {
    start();
    driver().click("cmd_pattern");
    for (const int row : {13, 41}) {
        driver().click_row("lstv_pattern", row);
        if (row == 13) driver().click("cmd_download");
        expect_a_key_for_every_button(desk().form);
    }
}

TEST_F(access_key_of, every_button_is_unique_in_the_edid_view_with_everything_visible) {
    start();
    show_edid_with_everything_enabled();
    expect_a_key_for_every_button(desk().form);
    desk().workbench.fra_compare.visible = true;
    expect_a_key_for_every_button(desk().form);
    desk().about.fra_about.visible = true;
    expect_a_key_for_every_button(desk().form);
    desk().about.fra_about.visible = false;
    desk().translation_frame.fra_edid_edit.visible = true;
    expect_a_key_for_every_button(desk().form);
}

TEST_F(access_key_of, every_button_is_unique_in_the_small_windows) {
    start();
    for (const std::int16_t face : {diag::hex_style, diag::automatic_run, diag::write_checksum}) {
        SCOPED_TRACE(face);
        desk().shared_fields.diag_mode = face;
        frm_diag small(desk().shared_fields, desk().edid_buffers, desk().window_text, desk().serial_number,
                       desk().sink_transfers, desk().exchange.host().events);
        small.load();
        expect_a_key_for_every_button(small.form);
    }
    desk().shared_fields.diag_mode = diag::none;
    desk().sink_transfers.frm_diag = {};
}

TEST_F(access_key_of, a_view_button_shows_its_view) {
    start();
    press(Qt::Key_E);
    EXPECT_EQ(desk().exchange.view_mode, 4);
    press(Qt::Key_A);
    EXPECT_EQ(desk().exchange.view_mode, 5);
}

TEST_F(access_key_of, the_read_side_is_shift_with_that_of_the_write_side) {
    start();
    show_edid_with_everything_enabled();
    desk().workbench.txt_write.text = "00";
    desk().workbench.txt_read.text = "01";
    press(Qt::Key_L, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(desk().workbench.txt_read.text.get(), "");
    EXPECT_EQ(desk().workbench.txt_write.text.get(), "00");
    press(Qt::Key_L);
    EXPECT_EQ(desk().workbench.txt_write.text.get(), "");
}

TEST_F(access_key_of, the_read_side_reads_the_sink) {
    start();
    driver().click("cmd_edid");
    press(Qt::Key_R, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_TRUE(driver().text("lab_read_checksum_0").endsWith(" Correct."));
    EXPECT_FALSE(generator->commands().contains("TIM999")) << "Alt+R alone is Refresh";
}

TEST_F(access_key_of, a_covered_button_does_nothing) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    ui.click("cmd_read_translate");
    generator->commands();
    desk().workbench.cmd_write.enabled = true;
    press(Qt::Key_W); // the translation covers WRITE
    EXPECT_TRUE(generator->commands().isEmpty());
    press(Qt::Key_K);
    EXPECT_FALSE(ui.is_shown("fra_edid_edit"));
}

TEST_F(access_key_of, a_disabled_button_does_nothing) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    generator->commands();
    desk().desk_frame.cmd_run.enabled = false;
    press(Qt::Key_S);
    EXPECT_TRUE(generator->commands().isEmpty());
}

TEST_F(access_key_of, a_busy_button_does_nothing) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    generator->commands();
    generator->command("delay 300");
    bool pressed_again = false;
    ui.when(heard("TIM001"), [&] {
        press(Qt::Key_S);
        ui.click("cmd_run");
        press(Qt::Key_S);
        pressed_again = true;
    });
    press(Qt::Key_S);
    EXPECT_TRUE(pressed_again);
    EXPECT_EQ(generator->commands(), QStringList{"TIM001"});
}

TEST_F(access_key_of, auto_repeat_presses_once) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    generator->commands();
    for (int i = 0; i < 5; ++i)
        QTest::simulateEvent(&program->main_window(), true, Qt::Key_S, Qt::AltModifier, "s", i > 0);
    EXPECT_EQ(generator->commands(), QStringList{"TIM001"});
}

TEST_F(access_key_of, a_panel_row_moves_the_focus_and_presses_nothing) {
    start();
    driver().click("cmd_setup");
    generator->commands();
    QStringList walked;
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_3);
        walked << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(walked, (QStringList{"cmd_asc_0", "cmd_asc_1", "cmd_asc_2", "cmd_asc_0"}));
    EXPECT_TRUE(generator->commands().isEmpty());
}

TEST_F(access_key_of, a_list_focuses_it) {
    start();
    driver().click("cmd_timing");
    driver().find("cmd_run").setFocus();
    press(Qt::Key_I);
    EXPECT_TRUE(driver().find("lstv_timing").hasFocus());
}

TEST_F(access_key_of, is_underlined_if_alt_alone_is_needed) {
    start();
    for (const auto* b : program->main_window().findChildren<QAbstractButton*>()) {
        const QKeySequence underlined = QKeySequence::mnemonic(b->text());
        if (underlined.isEmpty()) continue;
        QString name = b->objectName();
        const qsizetype last = name.lastIndexOf('_');
        bool has_index = false;
        name.mid(last + 1).toInt(&has_index);
        if (has_index) name = name.left(last) + "(" + name.mid(last + 1) + ")";
        const control* const c = desk().form.find(name.toStdString());
        ASSERT_NE(c, nullptr) << qPrintable(name);
        EXPECT_EQ(underlined, qt::access_key(*c)) << qPrintable(name);
        EXPECT_TRUE(b->shortcut().isEmpty()) << qPrintable(name) << " would be clicked twice";
    }
}

TEST_F(access_key_of, a_small_window_works_only_in_that_window) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    in_next_window("frm_diag", [&](const ui_driver& diag) {
        QWidget& window = diag.find("frm_diag");
        EXPECT_TRUE(wait_until([&] { return QApplication::activeWindow() == &window; }, 20000));
        QTest::keyClick(&window, Qt::Key_C, Qt::AltModifier);
        EXPECT_TRUE(diag.text("lab_checksum").startsWith("0x"));
        QTest::keyClick(&window, Qt::Key_E, Qt::AltModifier);
        EXPECT_TRUE(diag.find("cbo_eeprom").hasFocus());
        QTest::keyClick(&window, Qt::Key_X, Qt::AltModifier);
        EXPECT_FALSE(diag.is_shown("frm_diag"));
    });
    ui.click("cmd_sum_read");
    EXPECT_TRUE(desk().exchange.rs232_connected) << "Alt+C is Connect in the main window";
    EXPECT_EQ(desk().exchange.view_mode, 4);
}

} // namespace

} // namespace desk::gui
