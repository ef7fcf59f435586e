// Where the focus goes: after every view and every frame, by every key from every control, and after clicks on the
// background.

#include "bench_fixture.h"
#include "raw_input.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QTimer>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace desk::gui {

namespace {

using key_words = std::vector<std::pair<Qt::Key, const char*>>;

class hostile_focus : public bench {
protected:
    hostile_focus() {
        plug_generator();
        put_file("display.bin", generator->sink(1));
        put_file("marlo_rs232.ini", "1\r\n\"" + directory.filePath("display.bin").toLocal8Bit() + "\"\r\n\"" +
                                        directory.filePath("other.bin").toLocal8Bit() + "\"\r\n" +
                                        QByteArray("\"\"\r\n").repeated(8) + "0\r\n0\r\n0\r\n");
        start();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&program->main_window()));
    }

    raw_input held() { return raw_input(program->main_window()); }
    static std::string focused() { return raw_input::focused(); }

    void focus(const std::string& name) {
        driver().find(QString::fromStdString(name)).setFocus(Qt::TabFocusReason);
        ASSERT_EQ(focused(), name);
    }

    /// Puts the same bytes into both sides of the EDID view.
    void fill_both_sides() {
        const ui_driver ui = driver();
        ui.click("cmd_edid");
        ui.click("cmd_pre_f");
        ui.click("lab_pre_f_0");
        ui.click("cmd_read");
    }

    /// The tab stops, from the port list once around.
    std::vector<std::string> stops() {
        focus("cbo_com");
        std::vector<std::string> all;
        do {
            all.push_back(focused());
            raw_input::tap(Qt::Key_Tab);
        } while (focused() != "cbo_com" && all.size() < 200);
        return all;
    }
};

TEST_F(hostile_focus, moves_to_the_control_used_next) {
    EXPECT_EQ(focused(), "cmd_timing");
    const std::vector<std::pair<const char*, const char*>> steps = {
        {"cmd_timing", "lstv_timing"},
        {"cmd_pattern", "lstv_pattern"},
        {"cmd_fav_timing", "lstv_timing"},
        {"cmd_fav_pattern", "lstv_pattern"},
        {"cmd_auto", "lstv_auto"},
        {"cmd_setup", "cmd_download"},
        {"cmd_edid", "cmd_read"},
        {"cmd_about", "cmd_about_ok"},
        {"cmd_about_ok", "cmd_about"},
        {"cmd_pre_f", "lab_pre_f_0"},
        {"cmd_pre_f", "cmd_pre_f"},
        {"cmd_pre_f", "lab_pre_f_0"},
        {"lab_pre_f_0", "cmd_pre_f"},
        {"cmd_read", "cmd_read"},
        {"cmd_compare", "cmd_ok"},
        {"cmd_ok", "cmd_compare"},
        {"cmd_read_translate", "tree_edid"},
        {"cmd_edid_back", "cmd_read_translate"},
        {"cmd_timing", "lstv_timing"},
    };
    for (const auto& [click, next] : steps) {
        driver().click(click);
        EXPECT_EQ(focused(), next) << click;
    }
}

TEST_F(hostile_focus, waits_for_the_result_and_returns) {
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_pre_f");
    ui.click("lab_pre_f_0");
    ASSERT_TRUE(ui.find("cmd_verify").isEnabled());
    std::string meanwhile = "never";
    ui.when(heard("ERD001"), [&] { meanwhile = focused(); });
    focus("cmd_verify");
    raw_input::tap(Qt::Key_Return);
    EXPECT_EQ(meanwhile, "frm_main") << "keys have no effect meanwhile";
    EXPECT_EQ(focused(), "cmd_ok");
    raw_input::tap(Qt::Key_Return);
    EXPECT_FALSE(ui.is_shown("fra_compare"));
    EXPECT_EQ(focused(), "cmd_verify");
}

TEST_F(hostile_focus, stays_where_the_operator_moves_it_during_an_exchange) {
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    generator->command("delay 300");
    ui.when(heard("VER001"), [&] { focus("cmd_out_2"); });
    ui.click("cmd_about");
    EXPECT_EQ(focused(), "cmd_out_2");
    EXPECT_TRUE(ui.is_shown("fra_about"));
    raw_input::tap(Qt::Key_Escape);
    EXPECT_FALSE(ui.is_shown("fra_about"));
}

TEST_F(hostile_focus, escape_and_enter_close_the_topmost_frame) {
    const ui_driver ui = driver();
    fill_both_sides();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        ui.click("cmd_compare");
        focus("txt_msg");
        raw_input::tap(key);
        EXPECT_FALSE(ui.is_shown("fra_compare")) << key;
        ui.click("cmd_about");
        focus("cmd_disconn");
        if (key == Qt::Key_Escape) {
            raw_input::tap(key);
            EXPECT_FALSE(ui.is_shown("fra_about"));
        } else {
            ui.click("cmd_about_ok");
        }
    }
    ui.click("cmd_read_translate");
    raw_input::tap(Qt::Key_Return);
    EXPECT_TRUE(ui.is_shown("fra_edid_edit"));
    raw_input::tap(Qt::Key_Escape);
    EXPECT_FALSE(ui.is_shown("fra_edid_edit"));
    EXPECT_TRUE(ui.is_shown("fra_edid"));
    EXPECT_EQ(focused(), "cmd_read_translate");
}

TEST_F(hostile_focus, walks_the_list_of_files_with_the_arrows) {
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    focus("cmd_pre_f");
    raw_input::tap(Qt::Key_Return);
    ASSERT_TRUE(ui.is_shown("fra_pre_f"));
    EXPECT_EQ(focused(), "lab_pre_f_0");
    for (const auto& [key, name] : std::vector<std::pair<Qt::Key, const char*>>{{Qt::Key_Down, "lab_pre_f_1"},
                                                                                {Qt::Key_Down, "lab_pre_f_0"},
                                                                                {Qt::Key_Up, "lab_pre_f_1"},
                                                                                {Qt::Key_Up, "lab_pre_f_0"}}) {
        raw_input::tap(key);
        EXPECT_EQ(focused(), name);
    }
    raw_input::tap(Qt::Key_Escape);
    EXPECT_FALSE(ui.is_shown("fra_pre_f"));
    EXPECT_EQ(focused(), "cmd_pre_f");
    raw_input::tap(Qt::Key_Space);
    raw_input::tap(Qt::Key_Return);
    EXPECT_FALSE(ui.is_shown("fra_pre_f"));
    EXPECT_TRUE(ui.text("txt_write").startsWith("00 FF FF FF FF FF FF 00"));
    EXPECT_EQ(generator->commands(), QStringList());
}

TEST_F(hostile_focus, the_frame_shown_last_is_topmost) {
    const ui_driver ui = driver();
    fill_both_sides();
    ui.click("cmd_compare");
    ui.click("cmd_pre_f");
    ASSERT_TRUE(ui.is_shown("fra_compare"));
    const QWidget& w = program->main_window();
    const QWidget& list = ui.find("fra_pre_f");
    const QWidget& result = ui.find("fra_compare");
    const QPoint over_both = list.mapTo(&w, QPoint(0, 0)) + QPoint(300, 60);
    ASSERT_TRUE(result.rect().contains(result.mapFrom(&w, over_both)));
    EXPECT_TRUE(list.isAncestorOf(w.childAt(over_both)));
    // Escape closes the topmost one, then the next
    raw_input::tap(Qt::Key_Escape);
    EXPECT_FALSE(list.isVisible());
    EXPECT_TRUE(result.isVisible());
    raw_input::tap(Qt::Key_Escape);
    EXPECT_FALSE(result.isVisible());

    ui.click("cmd_pre_f");
    ui.click("cmd_compare");
    EXPECT_TRUE(result.isAncestorOf(w.childAt(over_both)) || w.childAt(over_both) == &result);
    EXPECT_EQ(focused(), "cmd_ok");
}

/// Where a key moves the focus, if it moves it.
using leads = std::map<std::pair<std::string, Qt::Key>, std::string>;

TEST_F(hostile_focus, neither_arrow_keys_nor_escape_leave_a_control) {
    const ui_driver ui = driver();
    const leads elsewhere = {
        {{"opt_edid_src_1", Qt::Key_Up}, "opt_edid_src_3"},    {{"opt_edid_src_1", Qt::Key_Left}, "opt_edid_src_3"},
        {{"opt_edid_src_1", Qt::Key_Down}, "opt_edid_src_2"},  {{"opt_edid_src_1", Qt::Key_Right}, "opt_edid_src_2"},
        {{"tree_edid", Qt::Key_Escape}, "cmd_read_translate"},
    };
    std::set<std::pair<std::string, Qt::Key>> seen;
    for (const char* view :
         {"cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern", "cmd_edid", "cmd_auto", "cmd_setup"}) {
        ui.click(view);
        for (const std::string& stop : stops()) {
            for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Escape}) {
                // in the port list the arrow keys open a port
                if (stop == "cbo_com" && (key == Qt::Key_Up || key == Qt::Key_Down)) continue;
                if (QString::fromStdString(stop).startsWith("opt_")) ui.click("opt_edid_src_1");
                focus(stop);
                raw_input::tap(key);
                const auto led = elsewhere.find({stop, key});
                EXPECT_EQ(focused(), led == elsewhere.end() ? stop : led->second) << view << ", " << key;
                seen.insert({stop, key});
            }
        }
    }
    EXPECT_GT(seen.size(), 300U);
    EXPECT_EQ(generator->commands(), QStringList());
}

TEST_F(hostile_focus, enter_and_space_press_only_the_focused_button) {
    const std::vector<std::pair<const char*, std::string>> presses = {{"cmd_timing", "lstv_timing"},
                                                                      {"cmd_pattern", "lstv_pattern"},
                                                                      {"cmd_fav_timing", "lstv_timing"},
                                                                      {"cmd_auto", "lstv_auto"},
                                                                      {"cmd_setup", "cmd_download"},
                                                                      {"cmd_out_1", "cmd_out_1"},
                                                                      {"cmd_deep_2", "cmd_deep_2"},
                                                                      {"cmd_download", "cmd_download"},
                                                                      {"cmd_refresh", "cmd_refresh"},
                                                                      {"cmd_about", "cmd_about_ok"},
                                                                      {"cmd_about_ok", "cmd_about"},
                                                                      {"cmd_edid", "cmd_read"},
                                                                      {"cmd_clear_read", "cmd_clear_read"},
                                                                      {"cmd_read", "cmd_read"},
                                                                      {"cmd_compare", "cmd_ok"},
                                                                      {"cmd_ok", "cmd_compare"},
                                                                      {"cmd_pre_f", "lab_pre_f_0"},
                                                                      {"cmd_pre_f", "cmd_pre_f"},
                                                                      {"cmd_read_translate", "tree_edid"},
                                                                      {"cmd_edid_back", "cmd_read_translate"},
                                                                      {"cmd_conn", "cmd_conn"},
                                                                      {"cmd_disconn", "cmd_disconn"},
                                                                      {"cmd_conn", "cmd_conn"}};
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        fill_both_sides();
        for (const auto& [name, next] : presses) {
            focus(name);
            raw_input::tap(key);
            EXPECT_EQ(focused(), next) << name << ", " << key;
        }
    }
}

TEST_F(hostile_focus, tab_skips_covered_controls) {
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    ui.click("cmd_read_translate");
    for (const std::string& stop : stops()) {
        const QWidget& w = ui.find(QString::fromStdString(stop));
        const QPoint middle = w.mapTo(&program->main_window(), w.rect().center());
        const QWidget* const there = program->main_window().childAt(middle);
        EXPECT_TRUE(there == &w || w.isAncestorOf(there)) << stop;
    }
}

TEST_F(hostile_focus, a_covered_button_ignores_clicks_of_its_adapter) {
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    ui.click("cmd_read_translate");
    generator->commands();
    ui.find<QAbstractButton>("cmd_read").click();
    ui.find<QAbstractButton>("cmd_pre_f").click();
    EXPECT_EQ(generator->commands(), QStringList());
    EXPECT_FALSE(desk().workbench.fra_pre_f.visible);
}

TEST_F(hostile_focus, a_click_on_the_background_keeps_the_focus) {
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 13);
    ui.click("cmd_download");
    ui.click("txt_color_setting_1");
    raw_input::tap(Qt::Key_2);
    for (const auto& [name, at] : std::vector<std::pair<const char*, QPoint>>{
             {"frm_main", {60, 590}}, {"fra_desk", {300, 500}}, {"lab_desk_note", {5, 5}}, {"fra_status", {60, 260}}}) {
        held().click_mouse(name, at);
        EXPECT_EQ(focused(), "txt_color_setting_1") << name;
    }
    raw_input::tap(Qt::Key_5);
    EXPECT_EQ(desk().desk_frame.txt_color_setting[1].text.get(), "25");
}

TEST_F(hostile_focus, no_port_is_opened_by_an_unintended_key) {
    const auto second = simulator_for(directory.filePath("com2"));
    const auto third = simulator_for(directory.filePath("com3"));
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    ui.click("cmd_read_translate");
    for (int i = 0; i < 3; ++i)
        raw_input::tap(Qt::Key_Down);
    EXPECT_EQ(desk().exchange.com_port, 1);

    // focus set by the program does not count as the operator's
    ui.find("cbo_com").setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_C, Qt::Key_End, Qt::Key_PageDown})
        raw_input::tap(key);
    EXPECT_EQ(desk().exchange.com_port, 1);
    focus("cmd_conn");
    focus("cbo_com");
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_End, Qt::Key_PageDown})
        raw_input::tap(key);
    EXPECT_EQ(desk().exchange.com_port, 1);
    raw_input::tap(Qt::Key_Down);
    EXPECT_EQ(desk().exchange.com_port, 2);
    raw_input::press(Qt::Key_Down);
    raw_input::repeat(Qt::Key_Down, 3);
    raw_input::release(Qt::Key_Down);
    EXPECT_EQ(desk().exchange.com_port, 3) << "one press, one port";
    ui.click("cbo_com");
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    raw_input::tap(Qt::Key_Home);
    raw_input::tap(Qt::Key_Return);
    EXPECT_EQ(desk().exchange.com_port, 1);
}

} // namespace

} // namespace desk::gui
