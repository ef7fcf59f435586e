// Operator tests through the real window, with a generator on a pseudo terminal.

#include "bench_fixture.h"
#include "button_color.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>

namespace desk::gui {

namespace {

class end_to_end : public bench {
protected:
    end_to_end() { plug_generator(); }
};

TEST_F(end_to_end, the_port_of_the_settings_file_opens_at_start_up) {
    start();
    EXPECT_TRUE(desk().exchange.rs232_connected);
    EXPECT_EQ(back_of(driver().find("cmd_conn")), green);
    EXPECT_TRUE(driver().is_shown("img_logo"));
    EXPECT_EQ(driver().find("frm_main").windowTitle(), "VELOTRACE ");
}

TEST_F(end_to_end, about_asks_for_the_firmware) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_about");
    EXPECT_TRUE(ui.is_shown("fra_about"));
    EXPECT_EQ(ui.text("lab_about"), "Application S/W is v1.3G\nLinking VELOTRACE ...\nHardware F/W is v1.2");
    EXPECT_EQ(ui.text("lab_ver"), "v11");
    ui.click("cmd_about_ok");
    EXPECT_FALSE(ui.is_shown("fra_about"));
}

TEST_F(end_to_end, a_chosen_timing_is_set) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    EXPECT_FALSE(ui.is_shown("img_logo"));
    ui.click_row("lstv_timing", 23);
    const QString name = QString::fromStdString(desk().catalogue.lstv_timing.text(23));
    EXPECT_EQ(ui.text("txt_htotal_pix"), QString::fromStdString(desk().catalogue.lstv_timing_sub.text(23)));
    generator->command("delay 600");
    bool was_red = false;
    ui.when(heard("TIM023"), [&] { was_red = back_of(ui.find("cmd_run")) == red && !ui.find("cmd_run").isEnabled(); });
    ui.click("cmd_run");
    EXPECT_TRUE(was_red);
    EXPECT_EQ(ui.text("lab_timing"), name);
    EXPECT_EQ(desk().catalogue.cur_timing, 23);
    EXPECT_TRUE(ui.find("cmd_run").isEnabled());
    EXPECT_TRUE(ui.find("lstv_timing").hasFocus());
}

TEST_F(end_to_end, a_chosen_pattern_is_set_and_read_back) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 41);
    EXPECT_TRUE(ui.is_shown("txt_motion_str"));
    EXPECT_TRUE(ui.is_shown("cmd_download"));
    EXPECT_EQ(ui.find("cmd_download").pos(), QPoint(5640 / 15, 2250 / 15));
    ui.click("cmd_run");
    EXPECT_EQ(desk().catalogue.cur_pattern, 41);
    ui.click_row("lstv_pattern", 2);
    EXPECT_FALSE(ui.is_shown("txt_motion_str"));
    ui.click("cmd_edid");
    ui.click("cmd_pattern");
    EXPECT_EQ(ui.find<QTreeWidget>("lstv_pattern").currentIndex().row(), 40);
}

TEST_F(end_to_end, the_keyboard_moves_along_the_timings) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    ui.press_key("lstv_timing", Qt::Key_Down);
    EXPECT_EQ(desk().catalogue.lstv_timing.selected(), 2);
    EXPECT_EQ(ui.text("txt_htotal_pix"), QString::fromStdString(desk().catalogue.lstv_timing_sub.text(2)));
    ui.press_key("lstv_timing", Qt::Key_End);
    EXPECT_EQ(desk().catalogue.lstv_timing.selected(), desk().catalogue.lstv_timing.row_count());
}

TEST_F(end_to_end, the_figures_follow_a_mouse_drag_over_the_rows) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    ui.drag_rows("lstv_timing", 3, 5);
    EXPECT_EQ(desk().catalogue.lstv_timing.selected(), 5);
    EXPECT_EQ(ui.text("txt_htotal_pix"), QString::fromStdString(desk().catalogue.lstv_timing_sub.text(5)));
    EXPECT_EQ(desk().desk_frame.fra_desk.caption.get(), desk().catalogue.lstv_timing.text(5));
}

TEST_F(end_to_end, the_wheel_over_the_port_list_opens_no_other_port) {
    start();
    const ui_driver ui = driver();
    ui.turn_wheel("cbo_com");
    EXPECT_EQ(desk().exchange.com_port, 1);
    EXPECT_TRUE(desk().exchange.rs232_connected);
}

TEST_F(end_to_end, no_other_control_inherits_the_focus_of_a_hidden_button) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_about");
    ui.click("cmd_about_ok");
    EXPECT_EQ(desk().form.focused, &desk().about.cmd_about) << "where it was before";
    EXPECT_FALSE(ui.find("cbo_com").hasFocus());
}

TEST_F(end_to_end, a_button_regains_the_focus_after_its_exchange) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    ui.click("cmd_deep_1");
    EXPECT_EQ(desk().form.focused, &desk().panel.cmd_deep[1]);
    EXPECT_TRUE(ui.find("cmd_deep_1").hasFocus());
}

TEST_F(end_to_end, favorites_are_checked_one_by_one_and_all_at_once) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_fav_timing");
    ui.click_check("lstv_timing", 5);
    EXPECT_TRUE(desk().catalogue.lstv_timing.row(5).checked);
    ui.click("cmd_timing");
    ui.click("cmd_fav_timing");
    EXPECT_TRUE(desk().catalogue.lstv_timing.row(5).checked);
    ui.click("cmd_check_all");
    EXPECT_EQ(ui.find<QTreeWidget>("lstv_timing").topLevelItem(0)->checkState(0), Qt::Checked);
    ui.click("cmd_check_none");
    EXPECT_FALSE(desk().catalogue.lstv_timing.row(5).checked);
}

TEST_F(end_to_end, a_hidden_check_box_ignores_clicks) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    ui.click_check("lstv_timing", 3);
    EXPECT_FALSE(desk().catalogue.lstv_timing.row(3).checked);
}

TEST_F(end_to_end, a_second_set_is_impossible_while_the_first_runs) {
    start();
    const ui_driver ui = driver();
    generator->command("drop 2");
    ui.click("cmd_timing");
    int clicks = 0;
    ui.when(heard("TIM001"), [&] {
        ui.click("cmd_run");
        ++clicks;
    });
    ui.click("cmd_run");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(ui.text("lab_timing"), "Link Error");
    EXPECT_TRUE(ui.find("cmd_run").isEnabled());
}

TEST_F(end_to_end, a_view_button_takes_effect_at_once_during_an_exchange) {
    start();
    const ui_driver ui = driver();
    generator->command("delay 600");
    ui.click("cmd_timing");
    int view = -1;
    ui.when(heard("TIM001"), [&] {
        ui.click("cmd_edid");
        view = desk().exchange.view_mode;
    });
    ui.click("cmd_run");
    EXPECT_EQ(view, 4);
    EXPECT_TRUE(ui.is_shown("fra_edid"));
    EXPECT_EQ(desk().catalogue.cur_timing, 1);
}

TEST_F(end_to_end, with_the_generator_silent_the_same_clicks_end_in_link_error) {
    start();
    const ui_driver ui = driver();
    generator->command("silent");
    ui.click("cmd_timing");
    ui.click("cmd_run");
    EXPECT_EQ(ui.text("lab_timing"), "Link Error");
    ui.click("cmd_about");
    EXPECT_EQ(ui.text("lab_about"),
              "Application S/W is v1.3G\nLinking VELOTRACE ...\nLink Error !\nHardware F/W is unknown.");
}

TEST_F(end_to_end, the_desk_survives_a_cable_pulled_during_an_exchange) {
    start();
    const ui_driver ui = driver();
    generator->command("silent");
    ui.click("cmd_timing");
    ui.when(heard("TIM001"), [&] { generator->kill(); });
    ui.click("cmd_run");
    EXPECT_EQ(ui.text("lab_timing"), "Link Error");

    generator.reset();
    plug_generator();
    ui.click("cmd_conn");
    EXPECT_EQ(back_of(ui.find("cmd_conn")), green);
    ui.click("cmd_run");
    EXPECT_EQ(desk().catalogue.cur_timing, 1);
    EXPECT_NE(ui.text("lab_timing"), "Link Error");
}

TEST_F(end_to_end, a_port_chosen_from_the_list_is_opened_at_once) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_disconn");
    EXPECT_EQ(back_of(ui.find("cmd_disconn")), red);
    const operated_simulator second(simulator_for(directory.filePath("com2")));
    ui.choose("cbo_com", 1);
    EXPECT_EQ(desk().exchange.com_port, 2);
    EXPECT_TRUE(desk().exchange.rs232_connected);
    ui.click("cmd_timing");
    ui.click("cmd_run");
    EXPECT_EQ(desk().catalogue.cur_timing, 1);
}

TEST_F(end_to_end, a_command_while_disconnected_shows_its_box) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_disconn");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    ui.click("cmd_about");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "RS232 is disconnected !");
    EXPECT_TRUE(ui.text("lab_about").endsWith("Link Error !\nHardware F/W is unknown."));
}

TEST_F(end_to_end, closing_the_window_rewrites_the_settings) {
    put_file("marlo_rs232.ini", "1\n\"a.hex\"\n\"\"\n\"\"\n\"\"\n\"\"\n\"\"\n\"\"\n\"\"\n\"\"\n\"\"\n2\n1\n1\n");
    start();
    program->main_window().close();
    EXPECT_TRUE(program->gate().over());
    EXPECT_EQ(program->exit_status(), 0);
    EXPECT_FALSE(program->main_window().isVisible());
    EXPECT_EQ(
        file("marlo_rs232.ini"),
        "1\r\n\"a.hex\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n2\r\n1\r\n1\r\n");
}

TEST_F(end_to_end, closing_the_window_during_an_exchange_ends_cleanly) {
    start();
    const ui_driver ui = driver();
    generator->command("silent");
    ui.click("cmd_timing");
    remove_file("marlo_rs232.ini");
    ui.when(heard("TIM001"), [&] { program->main_window().close(); });
    ui.click("cmd_run");
    EXPECT_TRUE(program->gate().over());
    EXPECT_EQ(program->exit_status(), 0);
    EXPECT_TRUE(file("marlo_rs232.ini").startsWith("1\r\n"));
    // the suspended procedure ended in its wait
    EXPECT_EQ(desk().status_frame.lab_timing.caption.get(), "");
    EXPECT_FALSE(desk().desk_frame.cmd_run.enabled);
}

TEST_F(end_to_end, a_key_press_on_the_window_hides_the_previous_files) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    desk().workbench.fra_pre_f.visible = true;
    ui.click("lab_write"); // any event updates the window
    EXPECT_TRUE(ui.is_shown("fra_pre_f"));
    ui.press_key("frm_main", Qt::Key_Shift);
    EXPECT_TRUE(ui.is_shown("fra_pre_f"));
    ui.press_key("frm_main", Qt::Key_A);
    EXPECT_FALSE(ui.is_shown("fra_pre_f"));
}

TEST_F(end_to_end, the_custom_string_holds_twelve_characters) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 41);
    ui.type("txt_motion_str", "ABCDEFGHIJKLMN");
    EXPECT_EQ(desk().desk_frame.txt_motion_str.text.get(), "ABCDEFGHIJKL");
}

TEST_F(end_to_end, the_boxes_of_the_figures_are_read_only) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    const QString before = ui.text("txt_htotal_pix");
    ui.type("txt_htotal_pix", "9");
    EXPECT_EQ(ui.text("txt_htotal_pix"), before);
}

TEST_F(bench, works_with_the_simulators_own_program) {
    generator.emplace(com1());
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    // a separate process may answer too late on a busy machine; an operator would press again
    for (int press = 0; press < 30 && !ui.text("lab_timing").startsWith("[01]"); ++press)
        ui.click("cmd_run");
    EXPECT_TRUE(ui.text("lab_timing").startsWith("[01]"));
    EXPECT_TRUE(generator->has_printed("> TIM001\n< TIM001\n"));
}

} // namespace

} // namespace desk::gui
