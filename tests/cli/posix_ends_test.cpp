// velotrace_cli as its user runs it: how it ends before it is done.

#ifndef _WIN32

#include "cli/posix_cli_bench.h"
#include "support/own_terminal.h"
#include "support/terminal.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include <termios.h>

namespace desk {
namespace {

class cli_ends : public test::cli_bench {
protected:
    void expect_works() {
        const test::program_end next = run({"set", "timing", "2"});
        EXPECT_EQ(next.status, 0) << next.err;
    }
    std::ptrdiff_t count_of(const std::string& command) {
        const strings all = received();
        return std::count(all.begin(), all.end(), command);
    }
    /// The program has sent the command and waits; a signal ends it.
    void expect_ended_by(int signal, const strings& words, const std::string& command) {
        strings as_json = words;
        as_json.insert(as_json.begin(), "--json");
        const auto times = count_of(command);
        const auto program = start(as_json);
        ASSERT_TRUE(test::eventually([&] { return count_of(command) > times; })) << program->err();
        program->signal(signal);
        EXPECT_EQ(program->wait(), 130);
        EXPECT_EQ(program->err(), "velotrace_cli: ended by a signal\n");
        EXPECT_EQ(program->out(), "{\"error\":\"ended by a signal\",\"status\":130}\n");
    }
};

TEST_F(cli_ends, in_the_middle_of_set) {
    plug_generator_in();
    generator("silent");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        expect_ended_by(signal, {"set", "timing", "7"}, "TIM007");
    generator("speak");
    expect_works();
}

TEST_F(cli_ends, in_the_middle_of_an_erase) {
    plug_generator_in();
    generator("erase 60000");
    expect_ended_by(SIGINT, {"edid", "erase", "--yes"}, "ERS001");
    expect_works();
}

TEST_F(cli_ends, in_the_middle_of_a_write) {
    plug_generator_in();
    const std::string unit = put_unit();
    generator("refuse EWR001 EWR001"); // no result
    expect_ended_by(SIGINT, {"edid", "write", unit}, "EWR001");
    generator("refuse off");
    expect_works();
}

TEST_F(cli_ends, in_the_middle_of_a_read_and_keeps_the_old_file) {
    plug_generator_in();
    folder.put("old.hex", "old");
    generator("refuse ERD001 ERD001"); // no data
    const std::size_t files = folder.file_count();
    expect_ended_by(SIGINT, {"edid", "read", path("old.hex")}, "ERD001");
    EXPECT_EQ(folder.content("old.hex"), "old");
    EXPECT_EQ(folder.file_count(), files + 2) << "its two streams";
}

TEST_F(cli_ends, in_a_batch_that_waits_for_a_line) {
    plug_generator_in();
    const auto batch = start({"-"}, {.input = ""});
    batch->type("status\n");
    ASSERT_TRUE(test::eventually([&] { return !batch->out().empty(); }));
    batch->signal(SIGINT);
    EXPECT_EQ(batch->wait_with_open_input(), 130);
    expect_works();
}

TEST_F(cli_ends, a_batch_with_lines_in_hand) {
    plug_generator_in();
    generator("silent");
    const auto batch = start({"--json", "-", "--keep-going"}, {.input = ""});
    std::string lines = "set timing 7\n";
    for (int i = 0; i < 100; ++i)
        lines += "list timings\n";
    batch->type(lines);
    ASSERT_TRUE(test::eventually([&] { return has_received("TIM007"); }));
    batch->signal(SIGINT);
    EXPECT_EQ(batch->wait_with_open_input(), 130);
    EXPECT_EQ(objects(batch->out()).size(), 1U) << "the lines after it are not run";
}

TEST_F(cli_ends, between_two_units) {
    plug_generator_in();
    const auto stamping =
        start({"--json", "edid", "stamp", put_unit(), "--serial", "7", "--count", "3", "--wait-key"}, {.input = ""});
    ASSERT_TRUE(test::eventually([&] { return stamping->err().find("press Enter") != std::string::npos; }));
    stamping->signal(SIGINT);
    EXPECT_EQ(stamping->wait_with_open_input(), 130);
    EXPECT_NE(stamping->err().find("go on with --serial 8\n"), std::string::npos) << stamping->err();
    EXPECT_EQ(stamping->out(),
              "{\"serial\":7,\"result\":\"PASS\"}\n{\"error\":\"ended by a signal\",\"status\":130}\n");
    expect_works();
}

TEST_F(cli_ends, in_the_middle_of_a_unit) {
    plug_generator_in();
    const std::string unit = put_unit();
    generator("refuse EWR001 EWR001"); // no result
    const auto stamping = start({"edid", "stamp", unit, "--serial", "7", "--count", "3"});
    ASSERT_TRUE(test::eventually([&] { return has_received("EWR001"); }));
    stamping->signal(SIGINT);
    EXPECT_EQ(stamping->wait(), 130);
    EXPECT_NE(stamping->err().find("unit 7 is not complete: go on with --serial 7\n"), std::string::npos)
        << stamping->err();
    EXPECT_EQ(stamping->out(), "");
}

TEST_F(cli_ends, when_the_operator_has_no_more_units) {
    plug_generator_in();
    const auto stamping = start({"edid", "stamp", put_unit(), "--serial", "7", "--count", "3", "--wait-key"});
    EXPECT_EQ(stamping->wait(), 3);
    EXPECT_NE(stamping->err().find("standard input has ended: go on with --serial 8\n"), std::string::npos)
        << stamping->err();
    EXPECT_EQ(stamping->out(), "7  PASS\n");
}

TEST_F(cli_ends, killed_while_it_writes_a_file) {
    plug_generator_in();
    ASSERT_EQ(run({"edid", "read", path("new.hex")}).status, 0);
    const std::string content = folder.content("new.hex");
    for (int i = 0; i < 5; ++i) {
        folder.put("unit.hex", "old");
        const auto reading = start({"edid", "read", path("unit.hex")});
        ASSERT_TRUE(test::eventually([&] { return folder.has("err" + reading->name()); }));
        const std::size_t files = folder.file_count();
        // at the first sign of a new file
        while (reading->runs() && folder.file_count() <= files && folder.content("unit.hex") == "old") {
        }
        reading->signal(SIGKILL);
        reading->wait();
        const std::string found = folder.content("unit.hex");
        EXPECT_TRUE(found == "old" || found == content) << found;
    }
    expect_works();
}

TEST_F(cli_ends, with_the_settings_of_the_line_restored) {
    plug_generator_in();
    const int line = ::open((folder / "com1").c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(line, 0);
    termios before{};
    ASSERT_EQ(::tcgetattr(line, &before), 0);
    generator("erase 60000");
    expect_ended_by(SIGINT, {"edid", "erase", "--yes"}, "ERS001");
    termios after{};
    ASSERT_EQ(::tcgetattr(line, &after), 0);
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    EXPECT_EQ(after.c_iflag, before.c_iflag);
    EXPECT_EQ(after.c_oflag, before.c_oflag);
    EXPECT_EQ(after.c_cflag, before.c_cflag);
    ::close(line);
}

TEST_F(cli_ends, when_nobody_reads_its_output) {
    plug_generator_in();
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ::close(ends[0]);
    const test::program_end ended = run({"status"}, {.prepare = [&] { ::dup2(ends[1], STDOUT_FILENO); }});
    ::close(ends[1]);
    EXPECT_EQ(ended.status, 3) << "not by a signal";
    EXPECT_EQ(ended.err, "velotrace_cli: standard output can't be written to\n");
    expect_works();
}

// A device that is opened gets the lowest free number: that of a closed stream.

TEST_F(cli_ends, with_closed_streams_and_nothing_of_theirs_on_the_line) {
    plug_generator_in();
    const strings status{"TIM999", "PAT999", "OUT999", "HDC999"};
    EXPECT_EQ(run({"--json", "status"}, {.output = "closed"}).status, 3);
    EXPECT_EQ(received(), status);
    EXPECT_EQ(run({"--json", "set", "timing", "99"}, {.errors = "closed"}).status, 2);
    EXPECT_EQ(run({"status"}, {.input = "closed"}).status, 0);
    EXPECT_EQ(run({"status"}, {.input = "closed", .output = "closed", .errors = "closed"}).status, 3);
    strings three = status;
    three.insert(three.end(), status.begin(), status.end());
    three.insert(three.end(), status.begin(), status.end());
    EXPECT_EQ(received(), three);
    generator("silent");
    EXPECT_EQ(run({"set", "timing", "7"}, {.errors = "closed"}).status, 1);
    generator("speak");
    three.insert(three.end(), {"TIM007", "TIM007"});
    EXPECT_EQ(received(), three);
    expect_works();
}

TEST_F(cli_ends, a_batch_with_closed_input) {
    const test::program_end ended = run({"-"}, {.input = "closed"});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(ended.out, "");
}

// progress

TEST_F(cli_ends, with_its_progress_cleared_from_the_terminal) {
    plug_generator_in();
    generator("erase 60000");
    const test::own_terminal screen;
    std::string shown;
    const auto erasing = start({"edid", "erase", "--yes"}, {.errors = screen.name()});
    ASSERT_TRUE(test::eventually([&] {
        shown += screen.shown();
        return shown.find("\rworking ...") != std::string::npos;
    }));
    erasing->signal(SIGINT);
    EXPECT_EQ(erasing->wait(), 130);
    shown += screen.shown();
    EXPECT_TRUE(shown.ends_with("\rworking ...\r           \rvelotrace_cli: ended by a signal\r\n")) << shown;
}

TEST_F(cli_ends, without_progress_in_a_file) {
    plug_generator_in();
    generator("erase 1600");
    EXPECT_EQ(run({"edid", "erase", "--yes"}).err, "");
}

TEST_F(cli_ends, without_progress_if_quiet) {
    plug_generator_in();
    generator("erase 1600");
    test::terminal screen;
    EXPECT_EQ(run({"--quiet", "edid", "erase", "--yes"}, {.errors = screen.name()}).status, 0);
    EXPECT_EQ(screen.written(), "");
}

TEST_F(cli_ends, with_a_whole_line_after_progress) {
    plug_generator_in();
    generator("silent");
    test::terminal screen;
    EXPECT_EQ(run({"set", "timing", "7"}, {.errors = screen.name()}).status, 1);
    EXPECT_NE(screen.written().find("velotrace_cli: Link Error\n"), std::string::npos);
}

} // namespace
} // namespace desk

#endif
