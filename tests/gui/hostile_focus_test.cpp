// Where the keys go: after every view and every frame, by every key from every control, and after clicks on nothing.

#include "bench_fixture.h"
#include "holding_hand.h"

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

    holding_hand held() { return holding_hand(program->main_window()); }
    static std::string focused() { return holding_hand::focused(); }

    void focus(const std::string& name) {
        operator_hand().find(QString::fromStdString(name)).setFocus(Qt::TabFocusReason);
        ASSERT_EQ(focused(), name);
    }

    /// The same bytes on both sides of the EDID view.
    void fill_both_sides() {
        const hand h = operator_hand();
        h.click("cmd_edid");
        h.click("cmd_pre_f");
        h.click("lab_pre_f_0");
        h.click("cmd_read");
    }

    /// The controls that Tab comes to, from the port list once around.
    std::vector<std::string> stops() {
        focus("cbo_com");
        std::vector<std::string> all;
        do {
            all.push_back(focused());
            holding_hand::tap(Qt::Key_Tab);
        } while (focused() != "cbo_com" && all.size() < 200);
        return all;
    }
};

TEST_F(hostile_focus, goes_to_what_the_operator_uses_next) {
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
        operator_hand().click(click);
        EXPECT_EQ(focused(), next) << click;
    }
}

TEST_F(hostile_focus, waits_for_the_result_and_goes_back_where_it_was) {
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_pre_f");
    h.click("lab_pre_f_0");
    ASSERT_TRUE(h.find("cmd_verify").isEnabled());
    std::string meanwhile = "never";
    h.when(heard("ERD001"), [&] { meanwhile = focused(); });
    focus("cmd_verify");
    holding_hand::tap(Qt::Key_Return);
    EXPECT_EQ(meanwhile, "frm_main") << "a key meanwhile works nothing";
    EXPECT_EQ(focused(), "cmd_ok");
    holding_hand::tap(Qt::Key_Return);
    EXPECT_FALSE(h.is_shown("fra_compare"));
    EXPECT_EQ(focused(), "cmd_verify");
}

TEST_F(hostile_focus, stays_where_the_operator_takes_it_during_an_exchange) {
    const hand h = operator_hand();
    h.click("cmd_setup");
    generator->tell("delay 300");
    h.when(heard("VER001"), [&] { focus("cmd_out_2"); });
    h.click("cmd_about");
    EXPECT_EQ(focused(), "cmd_out_2");
    EXPECT_TRUE(h.is_shown("fra_about"));
    holding_hand::tap(Qt::Key_Escape);
    EXPECT_FALSE(h.is_shown("fra_about"));
}

TEST_F(hostile_focus, escape_and_enter_leave_the_frame_on_top) {
    const hand h = operator_hand();
    fill_both_sides();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        h.click("cmd_compare");
        focus("txt_msg");
        holding_hand::tap(key);
        EXPECT_FALSE(h.is_shown("fra_compare")) << key;
        h.click("cmd_about");
        focus("cmd_disconn");
        if (key == Qt::Key_Escape) {
            holding_hand::tap(key);
            EXPECT_FALSE(h.is_shown("fra_about"));
        } else {
            h.click("cmd_about_ok");
        }
    }
    h.click("cmd_read_translate");
    holding_hand::tap(Qt::Key_Return);
    EXPECT_TRUE(h.is_shown("fra_edid_edit"));
    holding_hand::tap(Qt::Key_Escape);
    EXPECT_FALSE(h.is_shown("fra_edid_edit"));
    EXPECT_TRUE(h.is_shown("fra_edid"));
    EXPECT_EQ(focused(), "cmd_read_translate");
}

TEST_F(hostile_focus, walks_the_list_of_files_with_the_arrows) {
    const hand h = operator_hand();
    h.click("cmd_edid");
    focus("cmd_pre_f");
    holding_hand::tap(Qt::Key_Return);
    ASSERT_TRUE(h.is_shown("fra_pre_f"));
    EXPECT_EQ(focused(), "lab_pre_f_0");
    for (const auto& [key, name] : std::vector<std::pair<Qt::Key, const char*>>{{Qt::Key_Down, "lab_pre_f_1"},
                                                                                {Qt::Key_Down, "lab_pre_f_0"},
                                                                                {Qt::Key_Up, "lab_pre_f_1"},
                                                                                {Qt::Key_Up, "lab_pre_f_0"}}) {
        holding_hand::tap(key);
        EXPECT_EQ(focused(), name);
    }
    holding_hand::tap(Qt::Key_Escape);
    EXPECT_FALSE(h.is_shown("fra_pre_f"));
    EXPECT_EQ(focused(), "cmd_pre_f");
    holding_hand::tap(Qt::Key_Space);
    holding_hand::tap(Qt::Key_Return);
    EXPECT_FALSE(h.is_shown("fra_pre_f"));
    EXPECT_TRUE(h.text("txt_write").startsWith("00 FF FF FF FF FF FF 00"));
    EXPECT_EQ(generator->commands(), QStringList());
}

TEST_F(hostile_focus, the_frame_shown_last_lies_on_top) {
    const hand h = operator_hand();
    fill_both_sides();
    h.click("cmd_compare");
    h.click("cmd_pre_f");
    ASSERT_TRUE(h.is_shown("fra_compare"));
    const QWidget& w = program->main_window();
    const QWidget& list = h.find("fra_pre_f");
    const QWidget& result = h.find("fra_compare");
    const QPoint over_both = list.mapTo(&w, QPoint(0, 0)) + QPoint(300, 60);
    ASSERT_TRUE(result.rect().contains(result.mapFrom(&w, over_both)));
    EXPECT_TRUE(list.isAncestorOf(w.childAt(over_both)));
    // Escape closes the one on top, and then the one below
    holding_hand::tap(Qt::Key_Escape);
    EXPECT_FALSE(list.isVisible());
    EXPECT_TRUE(result.isVisible());
    holding_hand::tap(Qt::Key_Escape);
    EXPECT_FALSE(result.isVisible());

    h.click("cmd_pre_f");
    h.click("cmd_compare");
    EXPECT_TRUE(result.isAncestorOf(w.childAt(over_both)) || w.childAt(over_both) == &result);
    EXPECT_EQ(focused(), "cmd_ok");
}

/// Where a key leads to that does not stay.
using leads = std::map<std::pair<std::string, Qt::Key>, std::string>;

TEST_F(hostile_focus, no_arrow_key_and_no_escape_leaves_a_control) {
    const hand h = operator_hand();
    const leads elsewhere = {
        {{"opt_edid_src_1", Qt::Key_Up}, "opt_edid_src_3"},    {{"opt_edid_src_1", Qt::Key_Left}, "opt_edid_src_3"},
        {{"opt_edid_src_1", Qt::Key_Down}, "opt_edid_src_2"},  {{"opt_edid_src_1", Qt::Key_Right}, "opt_edid_src_2"},
        {{"tree_edid", Qt::Key_Escape}, "cmd_read_translate"},
    };
    std::set<std::pair<std::string, Qt::Key>> seen;
    for (const char* view :
         {"cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern", "cmd_edid", "cmd_auto", "cmd_setup"}) {
        h.click(view);
        for (const std::string& stop : stops()) {
            for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Escape}) {
                // the port list opens what its arrow keys choose
                if (stop == "cbo_com" && (key == Qt::Key_Up || key == Qt::Key_Down)) continue;
                if (QString::fromStdString(stop).startsWith("opt_")) h.click("opt_edid_src_1");
                focus(stop);
                holding_hand::tap(key);
                const auto led = elsewhere.find({stop, key});
                EXPECT_EQ(focused(), led == elsewhere.end() ? stop : led->second) << view << ", " << key;
                seen.insert({stop, key});
            }
        }
    }
    EXPECT_GT(seen.size(), 300U);
    EXPECT_EQ(generator->commands(), QStringList());
}

TEST_F(hostile_focus, enter_and_space_press_the_button_with_the_focus_and_nothing_else) {
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
            holding_hand::tap(key);
            EXPECT_EQ(focused(), next) << name << ", " << key;
        }
    }
}

TEST_F(hostile_focus, tab_comes_to_no_covered_control) {
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_read");
    h.click("cmd_read_translate");
    for (const std::string& stop : stops()) {
        const QWidget& w = h.find(QString::fromStdString(stop));
        const QPoint middle = w.mapTo(&program->main_window(), w.rect().center());
        const QWidget* const there = program->main_window().childAt(middle);
        EXPECT_TRUE(there == &w || w.isAncestorOf(there)) << stop;
    }
}

TEST_F(hostile_focus, a_covered_button_takes_no_click_from_its_model_adapter) {
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_read");
    h.click("cmd_read_translate");
    generator->commands();
    h.find<QAbstractButton>("cmd_read").click();
    h.find<QAbstractButton>("cmd_pre_f").click();
    EXPECT_EQ(generator->commands(), QStringList());
    EXPECT_FALSE(desk().workbench.fra_pre_f.visible);
}

TEST_F(hostile_focus, a_click_on_the_background_leaves_the_keys_where_they_are) {
    const hand h = operator_hand();
    h.click("cmd_pattern");
    h.click_row("lstv_pattern", 13);
    h.click("cmd_download");
    h.click("txt_color_setting_1");
    holding_hand::tap(Qt::Key_2);
    for (const auto& [name, at] : std::vector<std::pair<const char*, QPoint>>{
             {"frm_main", {60, 590}}, {"fra_desk", {300, 500}}, {"lab_desk_note", {5, 5}}, {"fra_status", {60, 260}}}) {
        held().click_mouse(name, at);
        EXPECT_EQ(focused(), "txt_color_setting_1") << name;
    }
    holding_hand::tap(Qt::Key_5);
    EXPECT_EQ(desk().desk_frame.txt_color_setting[1].text.get(), "25");
}

TEST_F(hostile_focus, no_port_is_opened_by_a_key_that_was_not_meant_for_it) {
    const auto second = simulator_for(directory.filePath("com2"));
    const auto third = simulator_for(directory.filePath("com3"));
    const hand h = operator_hand();
    h.click("cmd_edid");
    h.click("cmd_read");
    h.click("cmd_read_translate");
    for (int i = 0; i < 3; ++i)
        holding_hand::tap(Qt::Key_Down);
    EXPECT_EQ(desk().exchange.com_port, 1);

    // the focus that a program gives is not the operator's
    h.find("cbo_com").setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_C, Qt::Key_End, Qt::Key_PageDown})
        holding_hand::tap(key);
    EXPECT_EQ(desk().exchange.com_port, 1);
    focus("cmd_conn");
    focus("cbo_com");
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_End, Qt::Key_PageDown})
        holding_hand::tap(key);
    EXPECT_EQ(desk().exchange.com_port, 1);
    holding_hand::tap(Qt::Key_Down);
    EXPECT_EQ(desk().exchange.com_port, 2);
    holding_hand::press(Qt::Key_Down);
    holding_hand::repeat(Qt::Key_Down, 3);
    holding_hand::release(Qt::Key_Down);
    EXPECT_EQ(desk().exchange.com_port, 3) << "one press, one port";
    h.click("cbo_com");
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    holding_hand::tap(Qt::Key_Home);
    holding_hand::tap(Qt::Key_Return);
    EXPECT_EQ(desk().exchange.com_port, 1);
}

} // namespace

} // namespace desk::gui
