// velotrace_sim as its user runs it: command line, typed lines, the link to its terminal.

#ifndef _WIN32

#include "support/shell_run.h"
#include "support/terminal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace desk {
namespace {

class simulator_program : public testing::Test {
protected:
    /// Runs it with these lines typed.
    test::shell_run run(const std::string& typed, const std::string& words) {
        folder.put("typed", typed);
        return test::run_in_shell("timeout 60 \"" VELOTRACE_SIM "\" " + words + " <" + in_folder("typed"), folder);
    }
    std::string in_folder(const std::string& name) const { return "\"" + (folder / name).string() + "\""; }

    test::temporary_directory folder;
};

TEST_F(simulator_program, prints_its_usage) {
    const auto ended = run("", "--help");
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(ended.out.starts_with("usage: velotrace_sim [--timings N]"));
}

TEST_F(simulator_program, refuses_an_invalid_command_line) {
    const auto ended = run("quit\n", "--every");
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err, "velotrace_sim: unknown option \"--every\".\nTry velotrace_sim --help.\n");
}

TEST_F(simulator_program, has_a_link_to_its_terminal_until_it_quits) {
    const auto ended = run("silent\nquit\n", in_folder("com1"));
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(ended.out.starts_with("VELOTRACE simulator on /dev/")) << ended.out;
    EXPECT_TRUE(ended.out.ends_with("\nThe generator answers nothing.\nGood-bye.\n")) << ended.out;
    EXPECT_FALSE(folder.has("com1"));
}

TEST_F(simulator_program, sends_a_terminal_no_control_characters) {
    folder.put("typed", "sink 1 /\x1B[2J\x07\nquit\n");
    test::terminal screen;
    const std::string command =
        "timeout 60 \"" VELOTRACE_SIM "\" " + in_folder("com1") + " <" + in_folder("typed") + " >" + screen.name();
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_NE(screen.written().find("the file /?[2J? does not exist."), std::string::npos) << screen.written();
}

TEST_F(simulator_program, does_not_wait_for_a_pipe_in_place_of_an_edid) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto ended = run("sink 1 " + (folder / "pipe").string() + "\nquit\n", in_folder("com1"));
    EXPECT_NE(ended.out.find("can't be read: it is not a regular file."), std::string::npos) << ended.out;
}

TEST_F(simulator_program, removes_its_terminal_and_creates_another) {
    const auto ended = run("unplug\nplug\nquit\n", in_folder("com1"));
    EXPECT_EQ(ended.status, 0);
    std::size_t terminals = 0;
    for (std::size_t at = 0; (at = ended.out.find("VELOTRACE simulator on ", at)) != std::string::npos; ++at)
        ++terminals;
    EXPECT_EQ(terminals, 2U) << ended.out;
}

TEST_F(simulator_program, reports_why_it_cannot_be_plugged_in_and_continues) {
    // somebody else's file takes the name of the link while it is unplugged
    const std::string unplugged = "grep -q 'cable is unplugged' " + in_folder("out");
    const std::string typist = "(printf 'unplug\\n'; i=0; until " + unplugged +
                               " || [ $i -gt 20000 ]; do i=$((i+1)); done; printf 'mine' >" + in_folder("com1") +
                               "; printf 'plug\\nquit\\n')";
    const auto ended = test::run_in_shell(typist + " | timeout 60 \"" VELOTRACE_SIM "\" " + in_folder("com1"), folder);
    EXPECT_EQ(ended.status, 0);
    EXPECT_NE(ended.out.find("com1 already exists and is not a symbolic link.\nGood-bye.\n"), std::string::npos)
        << ended.out;
    EXPECT_EQ(folder.content("com1"), "mine");
}

TEST_F(simulator_program, leaves_a_link_of_the_operator_and_names_its_target) {
    std::filesystem::create_symlink("/dev/serial/by-id/adapter", folder / "com1");
    const auto ended = run("quit\n", in_folder("com1"));
    EXPECT_EQ(ended.status, 1);
    EXPECT_NE(ended.err.find("com1 leads to /dev/serial/by-id/adapter and is not replaced: choose another LINK."),
              std::string::npos)
        << ended.err;
    EXPECT_EQ(std::filesystem::read_symlink(folder / "com1"), "/dev/serial/by-id/adapter");
}

TEST_F(simulator_program, leaves_a_link_that_the_operator_has_created_meanwhile) {
    // while it is plugged in, and then unplugged
    const std::string typist = "(until [ -L " + in_folder("com1") + " ]; do :; done; ln -sfn /dev/ttyS90 " +
                               in_folder("com1") + "; printf 'unplug\nplug\nquit\n')";
    const auto ended = test::run_in_shell(typist + " | timeout 60 \"" VELOTRACE_SIM "\" " + in_folder("com1"), folder);
    EXPECT_EQ(ended.status, 0);
    EXPECT_NE(ended.out.find("com1 leads to /dev/ttyS90 and is not replaced: choose another LINK.\nGood-bye.\n"),
              std::string::npos)
        << ended.out;
    EXPECT_EQ(std::filesystem::read_symlink(folder / "com1"), "/dev/ttyS90");
}

TEST_F(simulator_program, ends_at_once_if_its_link_cannot_be_made) {
    const auto ended = run("", in_folder("no folder/com1"));
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(ended.err.starts_with("velotrace_sim: ")) << ended.err;
}

TEST_F(simulator_program, keeps_running_at_the_end_of_its_input) {
    const std::string link = in_folder("com1");
    const auto ended = test::run_in_shell("\"" VELOTRACE_SIM "\" " + link + " </dev/null >" + in_folder("said") +
                                              " & sim=$!; while [ ! -L " + link +
                                              " ] && kill -0 $sim; do :; done; kill -TERM $sim; wait $sim; echo $?",
                                          folder);
    EXPECT_EQ(ended.out, "0\n");
    EXPECT_FALSE(folder.has("com1")) << "it takes its link with it";
}

} // namespace
} // namespace desk

#endif
