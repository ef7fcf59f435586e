#include "shell/frm_main.h"

#include "support/desk_fixture.h"
#include "support/expect_failure.h"
#include "support/view_controls.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace desk {
namespace {

using test::desk_fixture;
using test::failure_of;
using test::usual_settings;
using strings = std::vector<std::string>;

class main_window : public desk_fixture {};

TEST_F(main_window, starts_with_these_fields) {
    desk.exchange.view_mode = 3;
    desk.exchange.download_mode = true;
    desk.logo_hidden = true;
    desk.catalogue.cur_timing = 1;
    desk.catalogue.cur_pattern = 1;
    desk.shared_fields.edid_file_name = "x";
    desk.shared_fields.diag_mode = 1;
    desk.shared_fields.edid_src = 3;
    desk.form.on_load();
    EXPECT_EQ(desk.exchange.view_mode, 254);
    EXPECT_FALSE(desk.exchange.download_mode);
    EXPECT_FALSE(desk.logo_hidden);
    EXPECT_EQ(desk.catalogue.cur_timing, 254);
    EXPECT_EQ(desk.catalogue.cur_pattern, 254);
    EXPECT_EQ(desk.shared_fields.edid_file_name, "");
    EXPECT_EQ(desk.shared_fields.diag_mode, 3);
    EXPECT_EQ(desk.shared_fields.edid_src, 1);
}

TEST_F(main_window, opens_the_stored_port_and_sends_nothing) {
    directory.put("marlo_rs232.ini", "7" + usual_settings.substr(1));
    desk.load();
    EXPECT_EQ(m.port.done, (strings{"open 7", "discard input", "discard output"}));
    EXPECT_EQ(desk.exchange.cbo_com.list_index(), 6);
    EXPECT_TRUE(desk.exchange.rs232_connected);
}

TEST_F(main_window, opens_no_port_for_number_0) {
    directory.put("marlo_rs232.ini", "0" + usual_settings.substr(1));
    desk.load();
    EXPECT_TRUE(m.port.done.empty());
    EXPECT_EQ(desk.exchange.cbo_com.list_index(), -1);
    EXPECT_FALSE(desk.exchange.rs232_connected);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(main_window, starts_disconnected) {
    desk.exchange.rs232_connected = true;
    m.port.missing = {1};
    desk.load();
    EXPECT_EQ(m.port.done, strings{"open 1"}) << "nothing is open that could be closed";
    EXPECT_FALSE(desk.exchange.rs232_connected);
}

TEST_F(main_window, fills_its_combo_boxes_and_the_autorun_rows) {
    desk.load();
    EXPECT_EQ(desk.exchange.cbo_com.items(),
              (strings{"COM1:", "COM2:", "COM3:", "COM4:", "COM5:", "COM6:", "COM7:", "COM8:"}));
    EXPECT_EQ(desk.autorun.cbo_interval.list_count(), 31);
    EXPECT_EQ(desk.autorun.lstv_auto.row_count(), 32);
    EXPECT_EQ(desk.autorun.lstv_auto.text(32), "32");
    EXPECT_EQ(desk.catalogue.cbo_timing.list_count(), 30);
    EXPECT_EQ(desk.catalogue.cbo_pattern.list_count(), 45);
}

TEST_F(main_window, sets_its_caption_and_version) {
    desk.load();
    EXPECT_EQ(desk.form.caption, "VELOTRACE ");
    EXPECT_EQ(desk.about.lab_ver.caption, "v11");
}

TEST_F(main_window, reports_the_port_before_it_reads_the_catalogue) {
    m.port.missing = {1};
    std::filesystem::remove(directory / "timing_pattern.ini");
    EXPECT_EQ(failure_of([&] { desk.load(); }), failure::file_not_found);
    ASSERT_EQ(m.boxes.all.size(), 1U);
    EXPECT_EQ(m.boxes.all[0].text, "RS232 can not work on COM 1: !");
}

TEST_F(main_window, closes_the_port_and_rewrites_the_settings) {
    desk.load();
    desk.exchange.com_port = 4;
    m.port.done.clear();
    desk.form.on_unload();
    EXPECT_EQ(m.port.done, strings{"close"});
    EXPECT_EQ(directory.content("marlo_rs232.ini"), "4" + usual_settings.substr(1));
}

TEST_F(main_window, closes_the_port_even_if_it_is_not_marked_open) {
    desk.load();
    desk.exchange.cmd_disconn_click();
    m.port.done.clear();
    desk.unload();
    EXPECT_EQ(m.port.done, strings{"close"});
}

TEST_F(main_window, ends_silently_if_the_settings_cannot_be_written) {
    desk.load();
    std::filesystem::remove(directory / "marlo_rs232.ini");
    std::filesystem::create_directory(directory / "marlo_rs232.ini");
    directory.put("marlo_rs232.ini/inside", "x");
    m.port.done.clear();
    EXPECT_EQ(failure_of([&] { desk.unload(); }), std::nullopt);
    EXPECT_EQ(m.port.done, strings{"close"});
    EXPECT_TRUE(m.boxes.all.empty());
}

#ifndef _WIN32
TEST_F(main_window, does_not_wait_for_a_pipe_in_place_of_its_files) {
    for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
        const std::string content = directory.content(name);
        std::filesystem::remove(directory / name);
        ASSERT_EQ(::mkfifo((directory / name).c_str(), 0600), 0);
        EXPECT_EQ(failure_of([&] { desk.load(); }), failure::path_file_access_error) << name;
        std::filesystem::remove(directory / name);
        directory.put(name, content);
    }
}

TEST_F(main_window, reports_why_the_settings_cannot_be_written) {
    desk.load();
    std::filesystem::remove(directory / "marlo_rs232.ini");
    ASSERT_EQ(::mkfifo((directory / "marlo_rs232.ini").c_str(), 0600), 0);
    std::string reason;
    m.host.report_silent_failure = [&](std::string_view sentence) { reason = sentence; };
    desk.unload();
    EXPECT_EQ(reason,
              "the file " + (directory / "marlo_rs232.ini").string() + " can't be written: it is not a regular file.");
}
#endif

TEST_F(main_window, reads_files_that_begin_with_a_byte_order_mark) {
    for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"})
        directory.put(name, "\xEF\xBB\xBF" + directory.content(name));
    desk.load();
    EXPECT_EQ(desk.exchange.com_port, 1);
    EXPECT_EQ(desk.catalogue.lstv_timing.row_count(), 30);
}

TEST_F(main_window, hides_the_previous_files_on_any_key) {
    desk.load();
    desk.cmd_edid.on_click();
    for (const int code : {13, 27, 65}) {
        desk.workbench.fra_pre_f.visible = true;
        desk.form.on_key_press(code);
        EXPECT_FALSE(desk.workbench.fra_pre_f.visible) << code;
    }
    desk.form.on_key_press(65);
    EXPECT_FALSE(desk.workbench.fra_pre_f.visible);
    EXPECT_TRUE(desk.workbench.fra_edid.visible);
}

TEST_F(main_window, hides_the_result_of_a_compare_on_ok) {
    desk.load();
    desk.cmd_edid.on_click();
    desk.workbench.fra_compare.visible = true;
    desk.workbench.cmd_ok.on_click();
    EXPECT_FALSE(desk.workbench.fra_compare.visible);
    EXPECT_TRUE(desk.workbench.fra_edid.visible);
}

TEST_F(main_window, returns_from_the_translation_to_the_edid_view) {
    desk.load();
    desk.cmd_edid.on_click();
    desk.translation_frame.fra_edid_edit.visible = true;
    desk.translation_frame.cmd_edid_back.on_click();
    EXPECT_FALSE(desk.translation_frame.fra_edid_edit.visible);
    EXPECT_TRUE(desk.workbench.fra_edid.visible);
    EXPECT_EQ(desk.exchange.view_mode, 4);
}

TEST_F(main_window, hides_the_translation_on_any_view_button) {
    desk.load();
    desk.cmd_edid.on_click();
    for (button* view : {&desk.catalogue.cmd_timing, &desk.catalogue.cmd_pattern, &desk.favorites.cmd_fav_timing,
                         &desk.favorites.cmd_fav_pattern, &desk.cmd_edid, &desk.autorun.cmd_auto, &desk.cmd_setup}) {
        desk.translation_frame.fra_edid_edit.visible = true;
        view->on_click();
        EXPECT_FALSE(desk.translation_frame.fra_edid_edit.visible) << view->name;
    }
}

TEST_F(main_window, hides_all_of_a_view_and_pumps_events) {
    desk.load();
    for (control* c : desk.form.controls())
        c->visible = true;
    desk.logo_hidden = true;
    int pumps = 0;
    bool hidden_at_pump = false;
    m.events.on_pump = [&] {
        ++pumps;
        hidden_at_pump = !desk.desk_frame.fra_desk.visible && !desk.desk_frame.txt_color_setting[3].visible;
    };
    desk.view_reset();
    EXPECT_EQ(pumps, 1);
    EXPECT_TRUE(hidden_at_pump);
    for (const std::string& name : test::view_controls) {
        ASSERT_NE(desk.form.find(name), nullptr) << name;
        EXPECT_FALSE(desk.form.find(name)->visible) << name;
    }
    for (const char* name : {"fra_status", "cmd_timing", "cmd_refresh", "fra_about", "img_logo", "cbo_com"})
        EXPECT_TRUE(desk.form.find(name)->visible) << name;
}

TEST_F(main_window, lights_only_the_button_of_the_current_view) {
    const std::vector<button*> view_buttons = {&desk.catalogue.cmd_timing,
                                               &desk.catalogue.cmd_pattern,
                                               &desk.favorites.cmd_fav_timing,
                                               &desk.favorites.cmd_fav_pattern,
                                               &desk.cmd_edid,
                                               &desk.autorun.cmd_auto,
                                               &desk.cmd_setup};
    for (int view = 0; view < 7; ++view) {
        desk.exchange.view_mode = static_cast<std::int16_t>(view);
        desk.view_paint();
        for (int i = 0; i < 7; ++i)
            EXPECT_EQ(view_buttons.at(static_cast<std::size_t>(i))->back_color, i == view ? 0xFFFF80U : 0x8000000FU)
                << view << " " << i;
    }
    desk.exchange.view_mode = 254;
    desk.view_paint();
    for (const button* b : view_buttons)
        EXPECT_EQ(b->back_color, 0x8000000FU);
}

TEST_F(main_window, changes_the_view_in_this_order) {
    desk.load();
    std::int16_t view_at_pump = 0;
    bool logo_at_pump = true;
    color color_at_pump = 0;
    m.events.on_pump = [&] {
        view_at_pump = desk.exchange.view_mode;
        logo_at_pump = desk.img_logo.visible;
        color_at_pump = desk.cmd_setup.back_color;
    };
    desk.change_view(6);
    EXPECT_FALSE(logo_at_pump);
    EXPECT_EQ(view_at_pump, 254) << "the events run before the view is set";
    EXPECT_EQ(color_at_pump, 0x8000000FU);
    EXPECT_EQ(desk.exchange.view_mode, 6);
    EXPECT_EQ(desk.cmd_setup.back_color, 0xFFFF80U);
}

} // namespace
} // namespace desk
