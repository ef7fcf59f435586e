#include "support/robot_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk::robot {
namespace {

using test::robot_test;

// ---- boxes and dialogs ----

TEST_F(robot_test, reports_the_boxes_since_the_last_call) {
    expect_ok("port 2 missing", "start");
    expect("boxes", "ok []");
    expect_ok("select cbo_com 1");
    expect("boxes", "ok [{\"text\": \"RS232 can not work on COM 2: !\", \"icon\": \"none\", \"buttons\": \"ok\"}]");
    expect("boxes", "ok []");
    expect("dialogs", "ok []");
}

TEST_F(robot_test, refuses_malformed_answers_and_files) {
    for (const char* line : {"answer", "answer maybe", "answer yes no", "file", "file nowhere", "file \"/x\" y",
                             "file \"/x\" 1 2", "file cancel 1"})
        expect_refused(line);
    for (const char* line :
         {"answer yes", "answer no", "answer cancel", "answer ok", "file \"/x\"", "file \"/x\" 2", "file cancel"})
        expect_ok(line);
}

// ---- reading ----

TEST_F(robot_test, gets_the_properties_of_each_kind) {
    expect_ok("start", "click cmd_timing");
    expect_values({"get frm_main.caption = \"VELOTRACE \"",
                   "get frm_main.shown = true",
                   "get cmd_run.caption = \"SET\"",
                   "get cmd_run.enabled = true",
                   "get cmd_run.visible = true",
                   "get cmd_run.back_color = 2147483663",
                   "get cmd_timing.back_color = 16777088",
                   "get lab_hori.fore_color = 0",
                   "get cmd_download.left = 5640",
                   "get cmd_download.top = 2250",
                   "get img_logo.width = 9090",
                   "get img_logo.height = 8370",
                   "get txt_htotal_pix.text = \"800\"",
                   "get txt_htotal_pix.locked = true",
                   "get txt_htotal_pix.sel_start = 0",
                   "get txt_htotal_pix.sel_length = 0",
                   "get txt_htotal_pix.max_length = 0",
                   "get cbo_com.list_index = 0",
                   "get cbo_com.list_count = 8",
                   "get cbo_com.text = \"COM1:\"",
                   "get lstv_timing.selected = 1",
                   "get lstv_timing.row_count = 30",
                   "get lstv_timing.check_boxes = false",
                   "get chk_established(16).value = 0",
                   "get opt_edid_src(1).value = true",
                   "get opt_edid_src(2).value = false",
                   "get opt_edid_src(1).caption = \"HDMI/DVI  OUT\"",
                   "get hsr_color_setting(3).value = 0",
                   "get lab_pre_f(9).caption = \"\"",
                   "get fra_hori.shown = true",
                   "get cmd_about_ok.visible = true",
                   "get cmd_about_ok.shown = false"});
}

TEST_F(robot_test, refuses_unknown_controls_and_properties) {
    expect_ok("start");
    for (const char* line : {"get cmd_run",
                             "get cmd_run.text",
                             "get nothing.caption",
                             "get lstv_timing.caption",
                             "get img_logo.caption",
                             "get",
                             "get cmd_run.caption twice",
                             "get cmd_out.caption",
                             "get cmd_out(4).caption",
                             "get opt_edid_src(0).value",
                             "columns cmd_run",
                             "rows cbo_com",
                             "row lstv_timing 31",
                             "row lstv_timing 0",
                             "row lstv_timing",
                             "rows",
                             "items lstv_timing",
                             "items",
                             "field nothing",
                             "field",
                             "controls frm_nothing",
                             "controls"})
        expect_refused(line);
}

TEST_F(robot_test, reads_lists_and_combo_boxes) {
    directory.put("timing_pattern.ini", "1\r\n\"[01] a\",800,640,16,96,\"-\",525,480,10,2,\"+\",25.175\r\n"
                                        "2\r\n\"[01] b\"\r\n\"[02] c\"\r\n");
    expect_ok("start");
    expect("columns lstv_pattern", "ok [\"Patterns\"]");
    expect("columns lstv_auto", "ok [\"No.\", \"Timing\", \"Pattern\", \"Interval (sec)\"]");
    expect("rows lstv_pattern", "ok [{\"text\": \"[01] b\", \"sub\": [], \"checked\": false}, "
                                "{\"text\": \"[02] c\", \"sub\": [], \"checked\": false}]");
    expect("row lstv_auto 32", "ok {\"text\": \"32\", \"sub\": [\"\", \"\", \"0\"], \"checked\": false}");
    expect("items cbo_pattern", "ok [\"[01] b\", \"[02] c\"]");
    expect("tree", "ok []");
}

TEST_F(robot_test, reports_the_fields_of_the_desk) {
    expect_ok("start");
    expect_values({"field view_mode = 254", "field logo_hidden = false", "field cur_timing = 254",
                   "field cur_pattern = 254", "field com_port = 1", "field rs232_connected = true",
                   "field download_mode = false", "field rx_count = 0", "field rx_text = \"\"", "field rx_done = false",
                   "field fav_timing_count = 30", "field fav_pattern_count = 45", "field edid_file_name = \"\"",
                   "field edid_src = 1", "field diag_mode = 3", "field eeprom_size_index = 0",
                   "field unused_byte_index = 0", "field checksum_4digits = 0"});
}

TEST_F(robot_test, lists_all_controls_of_a_window) {
    expect_ok("start");
    const json controls = json::parse(answer("controls frm_main").substr(3));
    const auto find = [&](const std::string& name) {
        for (const json& c : controls)
            if (c["name"] == name) return c;
        return json();
    };
    EXPECT_EQ(json_text(find("cmd_out(2)")),
              "{\"name\": \"cmd_out(2)\", \"kind\": \"button\", \"parent\": \"fra_setup\"}");
    EXPECT_EQ(find("fra_pre_f")["parent"], "fra_edid");
    EXPECT_EQ(find("lstv_auto")["kind"], "list_view");
    EXPECT_GT(controls.size(), 150U);
}

TEST_F(robot_test, gives_texts_with_their_line_ends_and_windows_characters) {
    directory.put("marlo_rs232.ini", "1\r\n\"C:\\Gr\xFCn/\x80.hex\"" + test::usual_settings.substr(5));
    expect_ok("start");
    expect("get lab_pre_f(0).caption", "ok \"C:\\\\Grün/€.hex\"");
    expect_ok("click cmd_timing");
    expect("get lab_desk_note.caption", "ok \"Select a timing in timing table.\\r\\n"
                                        "Press [SET] to upload the selected timing to VELOTRACE.\"");
    expect_ok("reply \"TIM*\" echo hex:80FF00", "click cmd_run");
    expect("field rx_text", "ok \"TIM001€ÿ\\u0000\"");
}

// ---- the generator ----

TEST_F(robot_test, refuses_unknown_ports_and_generators) {
    for (const char* line : {"port 0 ok", "port 9 ok", "port 1", "port 1 open", "port x ok", "port", "port 1 ok now",
                             "generator", "generator loud", "generator silent now"})
        expect_refused(line);
}

TEST_F(robot_test, refuses_malformed_replies) {
    for (const char* line :
         {"reply", "reply \"TIM001\"", "reply TIM001 echo", "reply \"TIM01\" echo", "reply \"TIM0001\" echo",
          "reply \"TIM001\" bogus", "reply \"TIM001\" none echo", "reply \"TIM001\" hex:0", "reply \"TIM001\" +x",
          "reply \"TIM001\" \"\\u0100\"", "reply raw", "reply raw echo", "reply \"raw\" \"x\"", "say", "say bogus"})
        expect_refused(line);
}

TEST_F(robot_test, scripts_the_generator) {
    expect_ok("start", "click cmd_timing", "reply \"TIM*\" \"general\"", "reply \"TIM001\" echo", "click cmd_run");
    expect("field cur_timing", "ok 1");
    expect_ok("reply \"TIM001\" clear", "click cmd_run");
    expect("field rx_text", "ok \"general\"");
    expect_ok("reply clear", "click cmd_run");
    expect("field rx_text", "ok \"\"");
}

TEST_F(robot_test, holds_sinks_for_the_simulated_generator) {
    std::string digits;
    for (int i = 0; i < 256; ++i)
        digits += "0A";
    expect_ok("sink 3 \"" + digits + "\"");
    expect("sink 3", "ok \"" + digits + "\"");
    std::string first = answer("sink 1");
    EXPECT_EQ(first.size(), 512U + 5);
    EXPECT_TRUE(first.starts_with("ok \"00FFFFFFFFFFFF00"));
    expect_ok("sink 1 none");
    EXPECT_EQ(answer("sink 1").find("00FFFFFFFFFFFF00"), std::string::npos);
    for (const char* line : {"sink", "sink 0", "sink 4", "sink x", "sink 1 \"00\"", "sink 1 \"zz\"", "sink 1 some"})
        expect_refused(line);
}

TEST_F(robot_test, hears_what_the_generator_says) {
    expect_ok("start", "say +20 \"TIM001\" +10 hex:00");
    expect("wire", "ok []");
    expect_ok("wait 30");
    expect("wire", "ok [\"< TIM001\"]");
    expect_ok("wait 30");
    expect("wire", "ok [\"< hex:00\"]");
    expect("wire", "ok []");
    expect("field rx_text", "ok \"\"");
}

TEST_F(robot_test, reports_an_endless_wait) {
    expect_ok("port 1 stuck", "start");
    expect("click cmd_about", "fatal 0 \"Does not return\"");
    expect("wire", "ok [\"> VER001\"]");
}

// ---- the example ----

TEST_F(robot_test, plays_its_example) {
    expect_ok("reply \"VER001\" \"VER012\"", "start", "click cmd_about");
    expect("get lab_about.caption",
           "ok \"Application S/W is v1.3G\\r\\nLinking VELOTRACE ...\\r\\nHardware F/W is v1.2\"");
    expect("wire", "ok [\"> VER001\", \"< VER012\"]");
    expect_ok("click cmd_about_ok", "reply \"TIM*\" echo", "click cmd_timing", "select lstv_timing 7", "click cmd_run");
    expect("field cur_timing", "ok 7");
    expect("boxes", "ok []");
}

} // namespace
} // namespace desk::robot
