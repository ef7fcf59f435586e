#include "support/robot_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk::robot {
namespace {

using test::robot_test;

// ---- lines and words ----

TEST_F(robot_test, ignores_empty_lines_and_comments) {
    for (const char* line : {"", "   ", "\t", "\r", "# start", "#"})
        expect(line, "");
}

TEST_F(robot_test, refuses_what_it_does_not_know) {
    expect_refused("dance", "\"start\" now", "type box \"open");
    expect_ok("start");
    expect_refused("dance");
}

TEST_F(robot_test, accepts_any_spaces_between_words) {
    expect_ok("  start  ");
    expect("  get    cmd_run.caption \r", "ok \"SET\"");
}

// ---- life ----

TEST_F(robot_test, refuses_commands_that_need_a_running_program) {
    const auto look = [this] {
        for (const char* line : {"stop",
                                 "wait 5",
                                 "why",
                                 "clock",
                                 "click cmd_about",
                                 "doubleclick lstv_auto",
                                 "select lstv_timing 1",
                                 "check lstv_timing 1 on",
                                 "type txt_motion_str \"x\"",
                                 "focus txt_motion_str",
                                 "key frm_main 65",
                                 "keyup lstv_timing",
                                 "slide hsr_color_setting(0) 5",
                                 "drag hsr_color_setting(0) 5",
                                 "hover lab_timing",
                                 "node K",
                                 "close frm_diag",
                                 "after 5 click cmd_about",
                                 "later",
                                 "get cmd_run.caption",
                                 "columns lstv_timing",
                                 "row lstv_timing 1",
                                 "rows lstv_timing",
                                 "items cbo_com",
                                 "tree",
                                 "field view_mode",
                                 "controls frm_main"})
            expect_no_program(line);
    };
    look();
    expect_ok("start", "stop");
    look();
}

TEST_F(robot_test, sets_up_the_generator_and_dialogs_at_any_time) {
    const auto set_up = [this] {
        for (const char* line :
             {"port 2 missing", "port 2 ok", "generator simulated", "generator silent", "reply \"TIM*\" echo",
              "reply raw \"EWR002\"", "reply clear", "say \"x\"", "answer yes", "file \"/tmp/x.hex\" 1", "file cancel"})
            expect_ok(line);
        for (const char* line : {"wire", "boxes", "dialogs", "sink 1"})
            expect_some_ok(line);
    };
    set_up();
    expect_ok("start");
    set_up();
    expect_ok("stop");
    set_up();
}

TEST_F(robot_test, starts_once_at_a_time) {
    expect_ok("start");
    expect_refused("start");
    expect_ok("stop", "start");
}

TEST_F(robot_test, keeps_only_the_files_over_a_restart) {
    expect_ok("start", "click cmd_timing", "select cbo_com 4", "select lstv_timing 7", "wait 500", "stop", "start");
    expect("field view_mode", "ok 254");
    expect("get lstv_timing.selected", "ok 1");
    expect("field com_port", "ok 5");
    expect("get img_logo.shown", "ok true");
    EXPECT_LT(std::stoi(answer("clock").substr(3)), 500);
}

TEST_F(robot_test, ends_on_quit) {
    EXPECT_FALSE(r.finished());
    expect_ok("quit");
    EXPECT_TRUE(r.finished());
}

TEST_F(robot_test, quits_while_the_program_runs) {
    expect_ok("start", "quit");
    EXPECT_TRUE(r.finished());
    EXPECT_EQ(directory.content("marlo_rs232.ini"), test::usual_settings);
}

TEST_F(robot_test, has_a_clock_in_steps_of_5) {
    expect_ok("start");
    const int start = std::stoi(answer("clock").substr(3));
    EXPECT_EQ(start % 5, 0);
    EXPECT_EQ(answer("clock"), "ok " + std::to_string(start)) << "it moves only by pumps";
    expect_ok("wait 100");
    expect("clock", "ok " + std::to_string(start + 100));
    expect_ok("wait 3");
    expect("clock", "ok " + std::to_string(start + 105));
    expect_ok("wait 0");
    expect("clock", "ok " + std::to_string(start + 105));
    for (const char* line : {"wait", "wait x", "wait -5", "wait 5 5"})
        expect_refused(line);
}

TEST_F(robot_test, ends_the_program_with_a_run_time_failure) {
    expect_ok("start");
    expect_refused("why");
    expect_ok("click cmd_timing");
    expect("select lstv_timing 27", "fatal 11 \"Division by zero\"");
    // these still read the state that it left
    expect("get lstv_timing.selected", "ok 27");
    expect("field view_mode", "ok 0");
    expect("boxes", "ok []");
    for (const char* line : {"why", "clock", "later", "dialogs", "wire", "sink 1", "tree", "columns lstv_timing",
                             "row lstv_timing 1", "rows lstv_pattern", "items cbo_com", "controls frm_main"})
        expect_some_ok(line);
    EXPECT_NE(answer("why").find("timing 27"), std::string::npos);
    for (const char* line : {"click cmd_about", "select lstv_timing 1", "wait 5", "stop", "after 5 click cmd_about",
                             "key frm_main 65", "close frm_main", "node K"})
        expect_no_program(line);
    expect_ok("start");
    expect_refused("why");
    expect("field view_mode", "ok 254");
}

TEST_F(robot_test, reports_a_failure_of_the_start) {
    std::filesystem::remove(directory / "timing_pattern.ini");
    expect("start", "fatal 53 \"File not found\"");
    EXPECT_NE(answer("why").find("timing_pattern.ini"), std::string::npos);
    expect("field com_port", "ok 1");
    expect("get frm_main.shown", "ok false");
    expect_no_program("click cmd_about");
    expect("start", "fatal 53 \"File not found\"");
    directory.put("timing_pattern.ini", test::plain_catalogue(1, 1));
    expect_ok("start");
}

TEST_F(robot_test, keeps_what_was_set_up_through_every_end) {
    expect_ok("reply \"TIM*\" echo", "port 3 missing", "start", "click cmd_timing");
    expect("select lstv_timing 27", "fatal 11 \"Division by zero\"");
    expect_ok("start", "stop", "start", "click cmd_timing", "click cmd_run");
    expect("field cur_timing", "ok 1");
    expect_ok("select cbo_com 2");
    expect("field rs232_connected", "ok false");
}

// ---- the operator ----

TEST_F(robot_test, clicks_buttons_that_can_be_used) {
    expect_ok("start", "click cmd_timing");
    expect("field view_mode", "ok 0");
    expect_ok("click frm_main.cmd_pattern");
    expect("field view_mode", "ok 1");
}

TEST_F(robot_test, refuses_impossible_clicks) {
    expect_ok("start");
    expect_refused("click cmd_run");       // not on show
    expect_refused("click cmd_check_all"); // in a frame that is not on show
    expect_refused("click cmd_nothing");
    expect_refused("click cmd_out"); // an array has indexes
    expect_refused("click frm_diag.cmd_ok", "click", "click cmd_timing twice", "click cmd_timing.caption");
    expect_ok("click cmd_edid");
    expect_refused("click cmd_write"); // disabled without an EDID
    expect_refused("click tim_rx");
    expect("field view_mode", "ok 4");
    expect("wire", "ok []");
}

TEST_F(robot_test, clicks_labels_frames_and_text_boxes) {
    expect_ok("start", "click lab_timing", "click fra_status", "click img_logo");
    expect_refused("click lstv_auto");
}

TEST_F(robot_test, selects_existing_rows_and_items) {
    expect_ok("start");
    expect_refused("select lstv_timing 1"); // not on show
    expect_ok("click cmd_timing", "select lstv_timing 30");
    expect("get fra_desk.caption", "ok \"timing 30\"");
    for (const char* line : {"select lstv_timing 31", "select lstv_timing 0", "select lstv_timing", "select cbo_com 8",
                             "select lstv_timing x", "select cbo_com -1", "select cmd_about 1"})
        expect_refused(line);
    expect("get lstv_timing.selected", "ok 30");
    expect_ok("select cbo_com 7");
    expect("field com_port", "ok 8");
    expect("get cbo_com.text", "ok \"COM8:\"");
}

TEST_F(robot_test, checks_rows_if_the_boxes_are_shown) {
    expect_ok("start", "click cmd_timing");
    expect_refused("check lstv_timing 2 on");
    expect_ok("click cmd_fav_timing", "check lstv_timing 2 on");
    expect("row lstv_timing 2", "ok {\"text\": \"timing 2\", \"sub\": [], \"checked\": true}");
    expect_ok("check lstv_timing 2 off");
    expect("row lstv_timing 2", "ok {\"text\": \"timing 2\", \"sub\": [], \"checked\": false}");
    for (const char* line : {"check lstv_timing 31 on", "check lstv_timing 0 on", "check lstv_timing 2 maybe",
                             "check lstv_timing 2", "check lstv_pattern 1 on", "check cmd_run 1 on"})
        expect_refused(line);
}

TEST_F(robot_test, types_into_boxes_that_are_open) {
    expect_ok("start");
    expect_refused("type txt_motion_str \"x\""); // not on show
    expect_ok("click cmd_pattern", "select lstv_pattern 41", "type txt_motion_str \"Hello\"");
    expect("get txt_motion_str.text", "ok \"Hello\"");
    expect("get txt_motion_str.focus", "ok true");
    expect_ok("type txt_motion_str \"\"");
    expect("get txt_motion_str.text", "ok \"\"");
    expect_ok("click cmd_timing");
    expect_refused("type txt_hf \"1\""); // locked
    expect_refused("type cmd_run \"x\"");
    expect_ok("click cmd_pattern", "select lstv_pattern 41");
    expect_refused("type txt_motion_str x"); // no quoted text
    expect_refused("type txt_motion_str");
    expect_ok("select lstv_pattern 13");
    expect_refused("type txt_color_setting(0) \"1\""); // disabled
}

TEST_F(robot_test, types_no_more_than_a_box_holds) {
    expect_ok("start", "click cmd_pattern", "select lstv_pattern 41");
    const int holds = std::stoi(answer("get txt_motion_str.max_length").substr(3));
    ASSERT_GT(holds, 0);
    const std::string full(static_cast<std::size_t>(holds), 'x');
    expect_ok("type txt_motion_str \"" + full + "\"");
    expect_refused("type txt_motion_str \"" + full + "y\"");
    expect("get txt_motion_str.text", "ok \"" + full + "\"");
}

TEST_F(robot_test, gives_text_boxes_the_focus) {
    expect_ok("start", "click cmd_timing");
    expect("get lstv_timing.focus", "ok true");
    expect_ok("focus txt_hf");
    expect("get txt_hf.focus", "ok true");
    expect("get lstv_timing.focus", "ok false");
    expect_refused("focus cmd_run", "focus txt_motion_str", "focus txt_hf now");
}

TEST_F(robot_test, presses_keys) {
    expect_ok("start", "key frm_main 65", "click cmd_timing", "key txt_hf 13");
    expect_refused("key txt_hf", "key txt_hf x");
    expect_ok("key cmd_about 13");
    expect_refused("key txt_motion_str 13", "key frm_diag 13");
}

TEST_F(robot_test, moves_no_disabled_slider) {
    expect_ok("start");
    expect_refused("slide hsr_color_setting(0) 5");
    expect_ok("click cmd_pattern", "select lstv_pattern 13");
    expect_refused("slide hsr_color_setting(0) 5", "drag hsr_color_setting(0) 5");
    expect("get hsr_color_setting(0).value", "ok 0");
    expect_refused("slide cmd_run 5");
}

TEST_F(robot_test, refuses_actions_that_a_control_does_not_take) {
    expect_ok("start");
    for (const char* line : {"keyup lstv_timing", "hover lab_pre_f(0)", "hover lab_timing 5", "doubleclick cmd_about",
                             "doubleclick lstv_auto", "node K", "node", "close frm_main", "close frm_diag", "close"})
        expect_refused(line);
    expect_ok("hover lab_timing", "click cmd_timing", "keyup lstv_timing");
    expect_refused("keyup cmd_run", "keyup lstv_timing 5");
}

// ---- later ----

TEST_F(robot_test, refuses_a_line_of_more_than_200_nested_commands) {
    const auto line = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "after 1 ";
        return text + "click cmd_about";
    };
    expect_ok("start");
    for (const int count : {201, 12000}) {
        expect(line(count), "refused \"too many commands are nested\"");
        expect_ok("wait 1000");
        expect("later", "ok []");
        expect("get fra_about.visible", "ok false");
    }
    expect_ok(line(200), "wait 1000");
    expect("get fra_about.visible", "ok true");
}

TEST_F(robot_test, refuses_commands_that_each_come_in_the_middle_of_200_others) {
    expect_ok("start");
    // a view button lets events in before it is done
    for (int i = 0; i < 12000; ++i)
        expect_ok("after 1 click cmd_timing");
    expect_ok("wait 1000");
    const std::string answers = answer("later");
    EXPECT_NE(answers.find("\"ok\""), std::string::npos);
    EXPECT_NE(answers.find("refused \\\"too many commands are nested\\\""), std::string::npos)
        << answers.substr(0, 200);
    expect_ok("click cmd_pattern");
}

TEST_F(robot_test, runs_a_later_command_in_the_middle_of_another) {
    expect_ok("start", "click cmd_timing", "after 100 get cmd_run.enabled", "after 100 click cmd_run",
              "after 50 get lab_timing.caption");
    expect("later", "ok []");
    expect_ok("click cmd_run");
    const std::string answers = answer("later");
    EXPECT_TRUE(answers.starts_with("ok [\"ok \\\"\\\"\", \"ok false\", \"refused ")) << answers;
    expect("later", "ok []");
}

TEST_F(robot_test, keeps_pending_commands_across_other_commands) {
    expect_ok("start", "after 300 click cmd_setup", "wait 200");
    expect("field view_mode", "ok 254");
    expect_ok("click cmd_edid", "wait 100");
    expect("field view_mode", "ok 6");
    expect("later", "ok [\"ok\"]");
}

TEST_F(robot_test, drops_pending_commands_on_stop) {
    expect_ok("start", "after 50 click cmd_setup", "stop", "start", "wait 100");
    expect("field view_mode", "ok 254");
    expect("later", "ok []");
}

TEST_F(robot_test, keeps_no_answer_of_a_later_command_over_a_fresh_start) {
    expect_ok("start", "after 5 click cmd_setup", "wait 50", "stop", "start");
    expect("later", "ok []");
}

TEST_F(robot_test, ends_the_running_command_if_a_later_one_fails) {
    expect_ok("start", "click cmd_timing", "after 50 select lstv_timing 27", "after 60 click cmd_edid");
    expect("click cmd_run", "fatal 11 \"Division by zero\"");
    expect("later", "ok []");
    expect("field view_mode", "ok 0");
}

TEST_F(robot_test, nests_later_commands) {
    expect_ok("start", "after 50 after 50 click cmd_setup", "wait 90");
    expect("field view_mode", "ok 254");
    expect("later", "ok [\"ok\"]");
    expect_ok("wait 20");
    expect("field view_mode", "ok 6");
    expect("later", "ok [\"ok\"]");
}

TEST_F(robot_test, refuses_to_do_other_things_later) {
    expect_ok("start");
    for (const char* line : {"after 5 start", "after 5 stop", "after 5 wait 5", "after 5 wire",
                             "after x click cmd_edid", "after -5 click cmd_edid", "after 5", "after", "after 5 dance"})
        expect_refused(line);
    expect_ok("wait 50");
    expect("later", "ok []");
}

TEST_F(robot_test, keeps_the_refusal_of_a_later_command) {
    expect_ok("start", "after 5 click cmd_run", "wait 10");
    EXPECT_TRUE(answer("later").starts_with("ok [\"refused \\\"")) << "not on show";
}

} // namespace
} // namespace desk::robot
