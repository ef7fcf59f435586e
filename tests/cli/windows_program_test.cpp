// velotrace_cli.exe as its user runs it, on the simulated generator at the other end of a pipe.

#include "platform/port_file.h"
#include "runtime/failure.h"
#include "support/desk_files.h"
#include "support/own_pipe.h"
#include "support/signal_fixture.h"
#include "support/windows_running_program.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::wait_until;

class cli_on_a_pipe : public testing::Test {
protected:
    using strings = std::vector<std::string>;

    cli_on_a_pipe() {
        folder.put("marlo_rs232.ini", test::usual_settings);
        folder.put("timing_pattern.ini", test::numbered_catalogue(25, 45));
        std::filesystem::copy_file(test::program_to_run(VELOTRACE_CLI), folder / "velotrace_cli.exe");
        start_generator();
    }

    void start_generator() {
        const std::string before = device();
        simulator.emplace(folder,
                          strings{utf8_from_path(test::program_to_run(VELOTRACE_SIM)), "--timings", "25", "--patterns",
                                  "45", path("port1.txt")},
                          test::stream_setup{.input = ""});
        EXPECT_TRUE(wait_until([&] { return !device().empty() && device() != before; }));
    }
    std::string device() const {
        try {
            return device_of_port_file(folder / "port1.txt").value_or("");
        } catch (const runtime_failure&) {
            return ""; // not written yet
        }
    }
    /// Types a line into the simulator and waits until it has replied.
    void generator(const std::string& line, const std::string& reply) {
        simulator->type(line + "\n");
        EXPECT_TRUE(wait_until([&] { return simulator->out().find("\n" + reply + "\n") != std::string::npos; }))
            << line;
    }
    bool has_received(const std::string& command) const {
        return simulator->out().find("\n> " + command + "\n") != std::string::npos;
    }

    std::unique_ptr<test::running_program> start(strings words, const test::stream_setup& streams = {}) const {
        words.insert(words.begin(), path("velotrace_cli.exe"));
        return std::make_unique<test::running_program>(folder, words, streams);
    }
    /// What it prints when it runs to its end without a failure.
    std::string text(const strings& words) const {
        const auto program = start(words);
        EXPECT_EQ(program->wait(), 0) << program->err();
        return program->out();
    }
    /// Expects a failure with this sentence and without an answer.
    void expect_failure(const strings& words, int status, const std::string& sentence) const {
        const auto program = start(words);
        EXPECT_EQ(program->wait(), status);
        EXPECT_EQ(program->err(), "velotrace_cli: " + sentence + "\n");
        EXPECT_EQ(program->out(), "");
    }
    std::string path(const std::string& name) const { return utf8_from_path(folder / name); }

    test::temporary_directory folder;
    std::optional<test::running_program> simulator;
};

TEST_F(cli_on_a_pipe, reads_and_sets) {
    EXPECT_EQ(text({"version"}), "program   v1.3G\nfirmware  v1.2\n");
    EXPECT_EQ(text({"set", "timing", "7"}), "  7  [07] timing\n");
    EXPECT_EQ(text({"status"}), "timing   [07] timing\npattern  [01] pattern\noutput   HDMI\nhdcp     OFF\n");
    EXPECT_EQ(text({"panel", "color-space", "yuv422"}), "color-space yuv422\n");
    EXPECT_NE(text({"panel"}).find("color-space  yuv422\n"), std::string::npos);
    EXPECT_EQ(text({"string", "HELLO WORLD"}), "HELLO WORLD\n");
    EXPECT_EQ(text({"string"}), "HELLO WORLD\n") << "the last bytes reach the generator";
}

TEST_F(cli_on_a_pipe, can_print_to_nowhere) {
    const auto program = start({"set", "timing", "7"}, {.output = "NUL"});
    EXPECT_EQ(program->wait(), 0) << program->err();
    EXPECT_TRUE(has_received("TIM007"));
}

TEST_F(cli_on_a_pipe, finds_its_port_by_number_and_by_name) {
    EXPECT_EQ(text({"--port", "1", "version"}), "program   v1.3G\nfirmware  v1.2\n");
    EXPECT_EQ(text({"--port", device(), "version"}), "program   v1.3G\nfirmware  v1.2\n");
    folder.put("port3.txt", device());
    EXPECT_EQ(text({"--port", "3", "version"}), "program   v1.3G\nfirmware  v1.2\n");
    expect_failure({"--port", "COM4095", "version"}, 3,
                   "COM4095 is not there: plug the adapter in, or choose another port");
    folder.put("port3.txt", "COM1\nCOM2");
    expect_failure({"--port", "3", "version"}, 3,
                   "the file " + path("port3.txt") + " names no device: it has more than one line");
}

TEST_F(cli_on_a_pipe, reads_writes_and_verifies_an_edid) {
    const std::string out = text({"edid", "read", path("unit.bin"), "--source", "vga"});
    EXPECT_NE(out.find("BK0="), std::string::npos) << out;
    EXPECT_EQ(folder.content("unit.bin").size(), 256U);
    text({"edid", "read", path("Prüfling.hex"), "--source", "vga"});
    EXPECT_TRUE(folder.content("Prüfling.hex").starts_with("00 FF FF FF FF FF FF 00"));
    EXPECT_EQ(text({"edid", "write", path("Prüfling.hex")}), "Match entirely.\n");
    EXPECT_EQ(text({"edid", "verify", path("unit.bin")}), "Match entirely.\n");
}

TEST_F(cli_on_a_pipe, stamps_units) {
    text({"edid", "read", path("unit.bin")});
    EXPECT_EQ(text({"edid", "stamp", path("unit.bin"), "--serial", "258", "--count", "2"}), "258  PASS\n259  PASS\n");
    text({"edid", "read", path("last.bin")});
    EXPECT_EQ(folder.content("last.bin").substr(12, 4), std::string("\x03\x01\0\0", 4));
}

TEST_F(cli_on_a_pipe, runs_a_batch) {
    const auto batch = start({"-"}, {.input = ""});
    batch->type("set timing 3\r\nset pattern 4\r\nstatus\r\n");
    EXPECT_EQ(batch->wait(), 0) << batch->err();
    EXPECT_TRUE(batch->out().ends_with("timing   [03] timing\npattern  [04] pattern\noutput   HDMI\nhdcp     OFF\n"))
        << batch->out();
}

TEST_F(cli_on_a_pipe, reports_a_silent_generator) {
    generator("silent", "The generator answers nothing.");
    expect_failure({"version"}, 1, "Link Error !");
    generator("speak", "The generator answers.");
    generator("drop 1", "The next answer is dropped.");
    EXPECT_EQ(text({"version"}), "program   v1.3G\nfirmware  v1.2\n") << "the second try is answered";
}

TEST_F(cli_on_a_pipe, leaves_a_new_generator_to_others_while_it_waits_for_a_killed_one) {
    generator("erase 60000", "An erase takes 60000 ms.");
    const auto erasing = start({"edid", "erase", "--yes"});
    EXPECT_TRUE(wait_until([&] { return has_received("ERS001"); }));
    simulator->kill();
    EXPECT_EQ(start({"version"})->wait(), 3) << "nobody serves the pipe";
    start_generator();
    EXPECT_EQ(text({"version"}), "program   v1.3G\nfirmware  v1.2\n");
    erasing->kill();
}

TEST_F(cli_on_a_pipe, reports_a_generator_that_is_killed_during_a_read) {
    generator("think 60000", "The generator pauses 60000 ms before each answer.");
    const auto reading = start({"edid", "read", path("unit.bin")});
    EXPECT_TRUE(wait_until([&] { return simulator->out().find("\n> ") != std::string::npos; }));
    simulator->kill();
    EXPECT_EQ(reading->wait(), 1);
    EXPECT_EQ(reading->err(), "velotrace_cli: Link Error !\n");
    EXPECT_FALSE(folder.has("unit.bin"));
}

TEST_F(cli_on_a_pipe, gives_up_if_the_pipe_takes_nothing) {
    const test::own_pipe stuck(0);
    expect_failure({"--port", stuck.name(), "version"}, 3, "Waiting for the port to send its output: nothing happens");
}

TEST_F(cli_on_a_pipe, reports_a_pipe_that_hangs_up_before_it_has_taken_anything) {
    test::own_pipe stuck(0);
    const auto waiting = start({"--port", stuck.name(), "version"});
    EXPECT_TRUE(wait_until([&] { return stuck.has_client(); }));
    stuck.hang_up();
    EXPECT_EQ(waiting->wait(), 1);
    EXPECT_EQ(waiting->err(), "velotrace_cli: Link Error !\n");
}

TEST_F(cli_on_a_pipe, says_that_another_program_has_the_pipe) {
    const auto holder = start({"-"}, {.input = ""});
    holder->type("version\n");
    EXPECT_TRUE(wait_until([&] { return !holder->out().empty(); }));
    expect_failure({"version"}, 3, device() + " is in use by another program: close the port there");
    EXPECT_EQ(holder->wait(), 0);
    EXPECT_EQ(text({"version"}), "program   v1.3G\nfirmware  v1.2\n");
}

} // namespace
} // namespace desk
