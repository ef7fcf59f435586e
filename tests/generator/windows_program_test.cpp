// velotrace_sim.exe as its user runs it: typed lines, the pipe and the file that names it, the control pipe.

#include "platform/native_serial_port.h"
#include "platform/port_file.h"
#include "support/expect_failure.h"
#include "support/windows_running_program.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::wait_until;

class simulator_program : public testing::Test {
protected:
    using strings = std::vector<std::string>;

    simulator_program() : program(utf8_from_path(test::program_to_run(VELOTRACE_SIM))) {}

    strings words(const strings& options) const {
        strings all{program};
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }
    std::string path(const std::string& name) const { return utf8_from_path(folder / name); }
    /// Runs it to its end.
    test::running_program& run(const strings& options, const std::string& typed = "") {
        ended.emplace(folder, words(options), test::stream_setup{.input = ""});
        ended->type(typed);
        status = ended->wait();
        return *ended;
    }

    test::temporary_directory folder;
    const std::string program;
    std::optional<test::running_program> ended;
    int status = -1;
};

TEST_F(simulator_program, prints_its_usage) {
    EXPECT_TRUE(run({"--help"}).out().starts_with("usage: velotrace_sim [--timings N]"));
    EXPECT_EQ(status, 0);
}

TEST_F(simulator_program, refuses_an_invalid_command_line) {
    EXPECT_EQ(run({"--every"}, "quit\n").err(),
              "velotrace_sim: unknown option \"--every\".\nTry velotrace_sim --help.\n");
    EXPECT_EQ(status, 2);
}

TEST_F(simulator_program, has_a_file_that_names_its_pipe_until_it_quits) {
    const std::string out = run({path("port1.txt")}, "silent\r\nquit\r\n").out();
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(out.starts_with(R"(VELOTRACE simulator on \\.\pipe\velotrace_sim_)")) << out;
    EXPECT_TRUE(out.ends_with("\nThe generator answers nothing.\nGood-bye.\n")) << out;
    EXPECT_FALSE(folder.has("port1.txt"));
}

TEST_F(simulator_program, leaves_a_file_of_the_operator) {
    folder.put("port1.txt", "COM12\r\n");
    EXPECT_EQ(run({path("port1.txt")}, "quit\n").err(),
              "velotrace_sim: " + path("port1.txt") + " names COM12 and is not replaced: choose another LINK.\n");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(folder.content("port1.txt"), "COM12\r\n");
}

TEST_F(simulator_program, ends_at_once_if_its_control_pipe_cannot_be_made) {
    EXPECT_EQ(run({"--control", path("control"), path("port1.txt")}, "quit\n").err(),
              "velotrace_sim: the control pipe " + path("control") +
                  " can't be made: its name has to be \\\\.\\pipe\\NAME.\n");
    EXPECT_EQ(status, 1);
    EXPECT_FALSE(folder.has("port1.txt"));
}

/// A simulator at port 1.
class running_simulator : public simulator_program {
protected:
    running_simulator() { start(); }

    void start() {
        simulator.emplace(folder, words({"--control", control, path("port1.txt")}), test::stream_setup{.input = ""});
        EXPECT_TRUE(wait_until([&] { return folder.has("port1.txt") && !device().empty(); }));
    }
    std::string device() const {
        try {
            return device_of_port_file(folder / "port1.txt").value_or("");
        } catch (const runtime_failure&) {
            return ""; // not written yet
        }
    }
    /// Sends a line to the control pipe and returns the reply.
    std::string reply(const std::string& line) { return run({"--send", control, line}).out(); }
    bool has_shown(const std::string& text) const {
        return wait_until([&] { return simulator->out().find(text) != std::string::npos; });
    }
    /// Raw answers, which are shown when their last byte has left.
    int data_shown() const {
        const std::string out = simulator->out();
        int count = 0;
        for (std::size_t at = out.find("\n< hex:"); at != std::string::npos; at = out.find("\n< hex:", at + 1))
            ++count;
        return count;
    }
    /// What arrives at the port, up to `count` bytes.
    std::string answer(std::size_t count) {
        std::string text;
        wait_until([&] {
            text += string_of(port->read());
            return text.size() >= count;
        });
        return text;
    }
    void expect_exchange() {
        port->write(bytes_of("VER001"));
        EXPECT_EQ(answer(6), "VER012");
    }

    const std::string control = R"(\\.\pipe\desk_test_control_)" + std::to_string(GetCurrentProcessId());
    std::optional<test::running_program> simulator;
    std::unique_ptr<serial_port> port = make_native_serial_port(folder.path());
};

TEST_F(running_simulator, answers_the_desk) {
    port->open(1);
    expect_exchange();
    EXPECT_TRUE(has_shown("> VER001\n< VER012\n"));
}

TEST_F(running_simulator, serves_one_desk_after_the_other) {
    for (int i = 0; i < 20; ++i) {
        port->open(1);
        expect_exchange();
        // a second desk has to wait for the first
        const auto second = make_native_serial_port(folder.path());
        if (i % 5 == 0) {
            EXPECT_EQ(test::sentence_of([&] { second->open(1); }),
                      device() + " is in use by another program: close the port there.");
        }
        if (i % 2 == 0) port->close();
    }
}

TEST_F(running_simulator, hangs_up_when_it_is_unplugged_and_comes_back) {
    port->open(1);
    expect_exchange();
    const std::string first = device();
    EXPECT_EQ(reply("unplug"), "The cable is unplugged.\n");
    EXPECT_FALSE(folder.has("port1.txt"));
    EXPECT_TRUE(wait_until([&] {
        port->write(bytes_of("VER001"));
        return port->out_count() == 0 && port->in_count() == 0;
    }));
    EXPECT_EQ(test::sentence_of([&] { make_serial_port_of(first)->open(1); }),
              first + " is not there: start the simulated generator, or name another device in the port's file.");
    EXPECT_EQ(reply("plug"), "The cable is plugged in.\n");
    EXPECT_NE(device(), first);
    EXPECT_TRUE(port->read().empty()) << "an open port is the old line";
    port->open(1);
    expect_exchange();
}

TEST_F(running_simulator, hangs_up_when_it_is_killed_and_another_takes_over_its_file) {
    port->open(1);
    expect_exchange();
    const std::string first = device();
    simulator->kill();
    port->write(bytes_of("VER001"));
    EXPECT_TRUE(wait_until([&] { return port->out_count() == 0; }));
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_EQ(device(), first) << "nobody was there to remove it";
    port->close();
    simulator.emplace(folder, words({"--control", control, path("port1.txt")}), test::stream_setup{.input = ""});
    EXPECT_TRUE(wait_until([&] { return !device().empty() && device() != first; }));
    port->open(1);
    expect_exchange();
}

TEST_F(running_simulator, does_not_wait_for_a_desk_that_reads_nothing) {
    port->open(1);
    for (int i = 0; i < 40; ++i)
        port->write(bytes_of("ERD001"));
    // with 256 bytes each: more than the pipe holds
    EXPECT_TRUE(wait_until([&] { return data_shown() > 16; }));
    EXPECT_EQ(reply("silent"), "The generator answers nothing.\n");
}

TEST_F(running_simulator, keeps_running_at_the_end_of_its_input) {
    simulator->end_input();
    EXPECT_EQ(reply("speak"), "The generator answers.\n");
    EXPECT_TRUE(simulator->runs());
}

TEST_F(running_simulator, ends_in_order_when_its_console_asks) {
    if (!simulator->interrupt()) GTEST_SKIP() << "the system sends no Ctrl+Break";
    EXPECT_EQ(simulator->wait_with_open_input(), 0);
    EXPECT_FALSE(folder.has("port1.txt")) << "it takes its file with it";
}

TEST_F(running_simulator, takes_lines_of_several_programs_at_its_control_pipe) {
    test::running_program first(folder, words({"--send", control}), {.input = ""});
    test::running_program second(folder, words({"--send", control}), {.input = ""});
    first.type("drop 3\nsi");
    second.type("garble 2\n");
    EXPECT_TRUE(wait_until([&] { return second.out() == "The next 2 answers have a wrong byte.\n"; }));
    first.type("lent\n");
    EXPECT_TRUE(
        wait_until([&] { return first.out() == "The next 3 answers are dropped.\nThe generator answers nothing.\n"; }));
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    EXPECT_EQ(first.err() + second.err(), "");
}

TEST_F(running_simulator, replies_in_full_before_it_lets_a_program_go) {
    // 512 digits; the help has more than one buffer's worth of lines
    EXPECT_EQ(reply("sink 1").size(), 513U);
    EXPECT_TRUE(reply("help").ends_with("quit                end the simulator\n"));
    EXPECT_EQ(run({"--send", control}, "silent\nspeak\nsink 4").out(),
              "The generator answers nothing.\nThe generator answers.\n"
              "\"4\" is not a whole number from 1 to 3.\n")
        << "the last line needs no line end";
}

TEST_F(running_simulator, outlives_programs_that_hang_at_its_control_pipe) {
    std::vector<std::unique_ptr<test::running_program>> idle;
    for (int i = 0; i < 20; ++i) {
        idle.push_back(std::make_unique<test::running_program>(folder, words({"--send", control}),
                                                               test::stream_setup{.input = ""}));
        idle.back()->type("speak\n");
        EXPECT_TRUE(wait_until([&] { return !idle.back()->out().empty(); })) << i;
    }
    idle[19]->kill();
    EXPECT_EQ(reply("silent"), "The generator answers nothing.\n");
}

TEST_F(running_simulator, has_its_control_pipe_for_itself) {
    if (test::is_wine()) GTEST_SKIP() << "Wine 8 lets two programs serve one pipe";
    EXPECT_EQ(run({"--control", control, path("port2.txt")}, "quit\n").err(),
              "velotrace_sim: the pipe " + control + " can't be made: another program serves it.\n");
    EXPECT_EQ(status, 1);
}

TEST_F(running_simulator, says_that_nobody_listens_any_more) {
    EXPECT_EQ(reply("quit"), "Good-bye.\n");
    EXPECT_EQ(simulator->wait_with_open_input(), 0);
    EXPECT_FALSE(folder.has("port1.txt"));
    EXPECT_EQ(run({"--send", control, "state"}).err(),
              "velotrace_sim: no simulator listens at " + control + ": Windows error 2.\n");
    EXPECT_EQ(status, 1);
}

} // namespace
} // namespace desk
