// desk_robot as its user runs it: command line, script, answers.

#include "generator/sink_edids.h"
#include "support/desk_files.h"
#include "support/shell_run.h"
#include "support/terminal.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace desk {
namespace {

class robot_program : public testing::Test {
protected:
    test::shell_run run(const std::string& script, const std::string& arguments) {
        folder.put("script", script);
        return test::run_in_shell("\"" DESK_ROBOT "\" " + arguments + " <\"" + (folder / "script").string() + "\"",
                                  folder);
    }
    std::string own_folder() const { return "\"" + folder.path().string() + "\""; }

    test::temporary_directory folder;
};

TEST_F(robot_program, answers_each_line_of_its_script) {
    folder.put("marlo_rs232.ini", test::usual_settings);
    folder.put("timing_pattern.ini", test::plain_catalogue(3, 2));
    const auto ended = run("start\n# a note\n\nfield fav_timing_count\nno such thing\n", own_folder());
    EXPECT_EQ(ended.out, "ok\nok 3\nrefused \"no such command\"\n");
    EXPECT_EQ(ended.status, 0);
}

TEST_F(robot_program, ends_on_quit) { EXPECT_EQ(run("quit\nclock\n", own_folder()).out, "ok\n"); }

/// The click that opens a modal window is answered while its procedure is suspended, and the last command is not
/// answered twice when the procedure is abandoned.
TEST_F(robot_program, ends_inside_a_modal_window_at_the_end_of_its_input) {
    folder.put("marlo_rs232.ini", test::usual_settings);
    folder.put("timing_pattern.ini", test::plain_catalogue(3, 2));
    folder.put("one.bin", string_of(first_sink_edid(1)));
    const std::string open_window =
        "start\nclick cmd_edid\nfile \"" + (folder / "one.bin").string() + "\"\nclick cmd_load\nclick cmd_sum_write\n";
    const auto ended = run(open_window + "get frm_diag.shown\n", own_folder());
    EXPECT_EQ(ended.out, "ok\nok\nok\nok\nok\nok true\n");
    EXPECT_EQ(ended.status, 0);
    const auto quit = run(open_window + "quit\nclock\n", own_folder());
    EXPECT_EQ(quit.out, "ok\nok\nok\nok\nok\nok\n");
    EXPECT_EQ(quit.status, 0);
}

TEST_F(robot_program, uses_its_own_folder_by_default) {
    // the first files are beside the programs
    EXPECT_EQ(run("start\n", "").out, "ok\n");
}

TEST_F(robot_program, sends_a_terminal_no_control_characters) {
    folder.put("marlo_rs232.ini", test::usual_settings);
    folder.put("timing_pattern.ini", test::plain_catalogue(3, 2));
    folder.put("script", "start\nfile \"/\xC2\x9B"
                         "2J\x7F.bin\"\nclick cmd_edid\nclick cmd_load\nboxes\n");
    test::terminal screen;
    const std::string command =
        "\"" DESK_ROBOT "\" " + own_folder() + " <\"" + (folder / "script").string() + "\" >" + screen.name();
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_NE(screen.written().find("/?2J?.bin dosen't exist !"), std::string::npos) << screen.written();
}

TEST_F(robot_program, accepts_only_one_folder) {
    const auto ended = run("quit\n", own_folder() + " " + own_folder());
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err, "usage: desk_robot [DIRECTORY] < script\n");
}

} // namespace
} // namespace desk
