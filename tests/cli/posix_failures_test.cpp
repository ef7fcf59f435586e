// velotrace_cli as its user runs it: what fails, with status and sentence.

#ifndef _WIN32

#include "cli/line_words.h"
#include "cli/posix_cli_bench.h"
#include "support/file_size_limit.h"
#include "support/other_user.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace desk {
namespace {

using cli::json;

class cli_failures : public test::cli_bench {
protected:
    void expect_works() { EXPECT_EQ(run({"set", "timing", "2"}).status, 0); }
};

// the generator

TEST_F(cli_failures, a_silent_generator) {
    plug_generator_in();
    generator("silent");
    const test::program_end ended = run({"--json", "set", "timing", "7"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.err, "velotrace_cli: Link Error\n");
    EXPECT_EQ(ended.out, "{\"error\":\"Link Error\",\"status\":1}\n");
    EXPECT_EQ(received(), (strings{"TIM007", "TIM007"})) << "two tries, as the desk";
    generator("speak");
    expect_works();
}

TEST_F(cli_failures, every_command_reports_a_silent_generator) {
    plug_generator_in();
    const std::string unit = put_unit();
    folder.put("steps.csv", "step,timing,pattern,seconds\n1,7,3,5\n");
    const strings lines = {"version",
                           "status",
                           "set pattern 7",
                           "panel",
                           "panel hdcp on",
                           "panel audio ext-7.1",
                           "color",
                           "color 1 2 3",
                           "string",
                           "string HELLO",
                           "favorites timings",
                           "favorites patterns 1",
                           "autorun",
                           "autorun '" + path("steps.csv") + "'",
                           "edid read '" + path("other.bin") + "'",
                           "edid write '" + unit + "'",
                           "edid verify '" + unit + "'",
                           "edid erase --yes"};
    // all at the same time, each with a generator of its own, since silence is slow
    folder.put("silent", "silent\n");
    std::vector<std::unique_ptr<test::running_program>> all;
    std::vector<std::unique_ptr<test::running_program>> generators;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string link = "line" + std::to_string(i);
        generators.push_back(std::make_unique<test::running_program>(folder, strings{VELOTRACE_SIM, path(link)},
                                                                     test::stream_setup{.input = path("silent")}));
        ASSERT_TRUE(test::eventually([&] { return generators.back()->out().ends_with("answers nothing.\n"); }));
        strings words = cli::words_of_line(lines.at(i));
        words.insert(words.begin(), {"--json", "--port", path(link)});
        all.push_back(start(words));
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(all.at(i)->wait(), 1) << lines.at(i) << all.at(i)->err();
        const json answer = last_object(all.at(i)->out());
        EXPECT_EQ(answer["status"], 1) << lines.at(i);
        EXPECT_NE(answer["error"], "") << lines.at(i);
    }
    EXPECT_FALSE(folder.has("other.bin"));
}

TEST_F(cli_failures, an_answer_that_is_not_the_echo) {
    plug_generator_in();
    generator("refuse TIM007 TIM003");
    expect_failure(run({"set", "timing", "7"}), 1, "Link Error");
    generator("refuse OUT001 XYZ001");
    expect_failure(run({"panel", "output", "pc"}), 1, "Link Error");
    expect_works();
}

TEST_F(cli_failures, an_answer_that_is_lost_or_garbled_once_is_asked_for_again) {
    plug_generator_in();
    generator("drop 1");
    EXPECT_EQ(run({"set", "timing", "3"}).status, 0);
    EXPECT_EQ(received(), (strings{"TIM003", "TIM003"}));
}

TEST_F(cli_failures, a_refusal_of_the_generator) {
    plug_generator_in();
    // LPCM has two channels with the internal sine
    const test::program_end ended = run({"--json", "panel", "lpcm", "7.1"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "{\"error\":\"the generator refuses lpcm 7.1 now\",\"status\":1}\n");
    EXPECT_EQ(received(), strings{"PCM003"}) << "answered with PCM100";
}

TEST_F(cli_failures, a_generator_without_color_settings) {
    plug_generator_in();
    generator("refuse CRR999 CRR300");
    expect_failure(run({"color", "1", "2", "3"}), 1, "the generator has no color settings now");
    EXPECT_EQ(received(), (strings{"CSC999", "CRR999"}));
}

TEST_F(cli_failures, a_missing_sink) {
    plug_generator_in();
    const std::string unit = put_unit();
    generator("sink 1 none");
    expect_failure(run({"edid", "write", unit}), 1, "EWR003 DDC Error,Write Fail !");
    const test::program_end stamped = run({"--json", "edid", "stamp", unit, "--serial", "41", "--count", "3"});
    EXPECT_EQ(stamped.status, 1);
    EXPECT_EQ(stamped.out,
              "{\"serial\":41,\"result\":\"FAIL\"}\n"
              "{\"error\":\"unit 41: EWR003 DDC Error,Write Fail !; go on with --serial 41\",\"status\":1}\n");
    EXPECT_NE(stamped.err.find("go on with --serial 41\n"), std::string::npos);
}

TEST_F(cli_failures, a_read_without_data) {
    plug_generator_in();
    folder.put("unit.hex", "old");
    generator("refuse ERD001 ERD001");
    expect_failure(run({"edid", "read", path("unit.hex")}), 1, "Timeout ! Read fail !");
    EXPECT_EQ(folder.content("unit.hex"), "old");
}

TEST_F(cli_failures, a_write_without_result) {
    plug_generator_in();
    const std::string unit = put_unit();
    generator("refuse EWR001 EWR001");
    expect_failure(run({"edid", "write", unit}), 1, "WRITE timeout error !");
}

TEST_F(cli_failures, a_line_that_vanishes_in_the_middle) {
    plug_generator_in();
    generator("refuse ERD001 ERD001"); // it waits for data
    const auto reading = start({"--json", "edid", "read", path("unit.hex")});
    ASSERT_TRUE(test::eventually([&] { return has_received("ERD001"); }));
    generator("unplug");
    EXPECT_EQ(reading->wait(), 1);
    EXPECT_EQ(last_object(reading->out())["status"], 1);
    EXPECT_FALSE(folder.has("unit.hex"));
    const test::program_end next = run({"status"});
    EXPECT_EQ(next.status, 3);
    EXPECT_NE(next.err.find("line, which is not there: plug it in"), std::string::npos) << next.err;
    generator("plug");
    expect_works();
}

TEST_F(cli_failures, a_unit_that_cannot_be_read_back_is_reported) {
    plug_generator_in();
    const std::string unit = put_unit();
    generator("refuse ERD001 XXX001");
    const test::program_end stamped = run({"--json", "edid", "stamp", unit, "--serial", "41"});
    // the desk shows PASS too
    EXPECT_EQ(stamped.status, 0);
    EXPECT_EQ(stamped.out, "{\"serial\":41,\"result\":\"PASS\",\"message\":\"Read sink's edid fail !\"}\n");
    EXPECT_NE(stamped.err.find("unit 41: Read sink's edid fail !\n"), std::string::npos) << stamped.err;
}

TEST_F(cli_failures, a_serial_number_that_the_desk_cannot_store) {
    plug_generator_in();
    // the checksum would be 256: 6 x FF, 100, 1 and the number make 1792
    const test::program_end stamped = run({"edid", "stamp", put_unit(), "--serial", "160", "--count", "3"});
    EXPECT_EQ(stamped.status, 4);
    EXPECT_EQ(stamped.out, "160  PASS\n");
    EXPECT_NE(stamped.err.find("velotrace_cli: unit 161 is not complete: go on with --serial 161\n"),
              std::string::npos);
    EXPECT_NE(stamped.err.find("velotrace_cli: run-time failure 6: Storing the serial number 161"), std::string::npos)
        << stamped.err;
}

// the port

TEST_F(cli_failures, a_missing_port) {
    const test::program_end ended = run({"--json", "--port", "/no/such port", "status"});
    EXPECT_EQ(ended.status, 3);
    const std::string sentence = "/no/such port is not there: plug the adapter in, or make a com link to it";
    EXPECT_EQ(ended.err, "velotrace_cli: " + sentence + "\n");
    EXPECT_EQ(ended.out, json({{"error", sentence}, {"status", 3}}).dump() + "\n");
}

TEST_F(cli_failures, a_link_to_a_missing_adapter) {
    std::filesystem::remove(folder / "com1");
    std::filesystem::create_symlink("/dev/serial/by-id/adapter", folder / "com1");
    expect_failure(run({"status"}), 3,
                   path("com1") + " leads to /dev/serial/by-id/adapter, which is not there: plug it in, or point the "
                                  "link to another device");
}

TEST_F(cli_failures, a_port_that_is_no_serial_port) {
    expect_failure(run({"--port", "/dev/null", "status"}), 3,
                   "/dev/null can't be used as a serial port: Inappropriate ioctl for device: choose another port");
    expect_failure(run({"--port", folder.path().string(), "status"}), 3,
                   std::filesystem::canonical(folder.path()).string() + " is not a serial port: choose another port");
    expect_failure(run({"--port", path("marlo_rs232.ini"), "status"}), 3,
                   std::filesystem::canonical(folder / "marlo_rs232.ini").string() +
                       " is not a serial port: choose another port");
    EXPECT_EQ(folder.content("marlo_rs232.ini"), test::usual_settings);
}

TEST_F(cli_failures, a_port_that_another_velotrace_cli_holds) {
    plug_generator_in();
    const auto first = start({"-"}, {.input = ""});
    first->type("status\n");
    ASSERT_TRUE(test::eventually([&] { return !first->out().empty(); }));
    // in these tests the user may be root, whom only a lock stops
    const test::program_end second = run({"set", "timing", "7"});
    EXPECT_EQ(second.status, 3);
    EXPECT_NE(second.err.find(" is in use by velotrace_cli (process " + std::to_string(first->id()) + ","),
              std::string::npos)
        << second.err;
    EXPECT_FALSE(has_received("TIM007"));
    first->type("set timing 3\n");
    EXPECT_EQ(first->wait(), 0);
    expect_works();
}

TEST_F(cli_failures, a_port_that_the_program_of_another_user_holds) {
    if (!test::can_be_others()) GTEST_SKIP() << "needs root";
    plug_generator_in();
    std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    ::chmod(std::filesystem::canonical(folder / "com1").c_str(), 0666);
    const auto first = start({"-"}, {.input = ""});
    first->type("status\n");
    ASSERT_TRUE(test::eventually([&] { return !first->out().empty(); }));
    const test::program_end second = run({"set", "timing", "7"}, {.prepare = [] {
                                             if (::setgid(test::carol.group) != 0 || ::setuid(test::carol.number) != 0)
                                                 ::_exit(125);
                                         }});
    EXPECT_EQ(second.status, 3);
    EXPECT_NE(second.err.find(" is in use by "), std::string::npos) << second.err;
    EXPECT_EQ(first->wait(), 0);
}

TEST_F(cli_failures, a_second_program_while_units_are_stamped) {
    plug_generator_in();
    const std::string unit = put_unit();
    const auto first = start({"edid", "stamp", unit, "--serial", "7", "--count", "2", "--wait-key"}, {.input = ""});
    ASSERT_TRUE(test::eventually([&] { return first->err().find("press Enter") != std::string::npos; }));
    EXPECT_EQ(run({"edid", "erase", "--yes"}).status, 3);
    first->type("\n");
    EXPECT_EQ(first->wait_with_open_input(), 0);
    EXPECT_EQ(first->out(), "7  PASS\n8  PASS\n");
    EXPECT_FALSE(has_received("ERS001"));
}

// the command line

TEST_F(cli_failures, a_bad_command_line_sends_nothing) {
    plug_generator_in();
    for (const strings& words : std::vector<strings>{{},
                                                     {"nonsense"},
                                                     {"set", "timing", "26"},
                                                     {"set", "timing", "timing"},
                                                     {"set", "pattern", ""},
                                                     {"panel", "output", "vga"},
                                                     {"color", "1", "2"},
                                                     {"string", "1234567890123"},
                                                     {"favorites", "timings", "26"},
                                                     {"edid", "erase"},
                                                     {"edid", "write", "unit.txt"},
                                                     {"edid", "stamp", "unit.hex", "--serial", "4294967296"},
                                                     {"--port", "9", "status"}}) {
        strings as_json = words;
        as_json.insert(as_json.begin(), "--json");
        const test::program_end ended = run(as_json);
        EXPECT_EQ(ended.status, 2) << testing::PrintToString(words);
        EXPECT_EQ(last_object(ended.out)["status"], 2) << ended.out;
        EXPECT_TRUE(ended.err.starts_with("velotrace_cli: ")) << ended.err;
        EXPECT_EQ(run(words).status, 2);
    }
    EXPECT_EQ(received(), strings{});
}

// the desk's own files

TEST_F(cli_failures, missing_or_garbled_settings) {
    plug_generator_in();
    folder.put("marlo_rs232.ini", "one\r\n");
    expect_failure(run({"status"}), 4,
                   "run-time failure 13: Reading the settings file marlo_rs232.ini: \"one\" is not a number");
    folder.put("marlo_rs232.ini", "");
    const test::program_end empty = run({"--json", "--port", "1", "status"});
    EXPECT_EQ(empty.status, 4);
    EXPECT_TRUE(empty.err.starts_with("velotrace_cli: run-time failure 62: ")) << empty.err;
    EXPECT_EQ(last_object(empty.out)["status"], 4);
    std::filesystem::remove(folder / "marlo_rs232.ini");
    const test::program_end missing = run({"status"});
    EXPECT_EQ(missing.status, 4);
    EXPECT_TRUE(missing.err.starts_with("velotrace_cli: run-time failure 53: ")) << missing.err;
    EXPECT_EQ(received(), strings{});
}

TEST_F(cli_failures, a_missing_catalogue) {
    plug_generator_in();
    std::filesystem::remove(folder / "timing_pattern.ini");
    for (const strings& words : std::vector<strings>{{"list", "timings"}, {"set", "timing", "7"}, {"status"}}) {
        const test::program_end ended = run(words);
        EXPECT_EQ(ended.status, 4);
        EXPECT_TRUE(ended.err.starts_with("velotrace_cli: run-time failure 53: ")) << ended.err;
    }
    EXPECT_EQ(received(), strings{});
}

// files

TEST_F(cli_failures, a_full_disk_keeps_the_old_file) {
    plug_generator_in();
    folder.put("unit.hex", "old");
    folder.put("steps.csv", "old");
    const test::stream_setup full{.prepare = [] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{200, 200};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }};
    const std::size_t files = folder.file_count();
    const test::program_end hex = run({"edid", "read", path("unit.hex")}, full);
    EXPECT_EQ(hex.status, 3) << hex.err;
    EXPECT_NE(hex.err.find("unit.hex"), std::string::npos) << hex.err;
    EXPECT_EQ(folder.content("unit.hex"), "old");
    EXPECT_EQ(folder.file_count(), files + 2) << "nothing but the output of the program";
}

TEST_F(cli_failures, a_file_that_cannot_be_written) {
    plug_generator_in();
    std::filesystem::create_directory(folder / "folder.hex");
    ASSERT_EQ(::mkfifo((folder / "pipe.csv").c_str(), 0600), 0);
    for (const strings& words : std::vector<strings>{{"edid", "read", path("folder.hex")},
                                                     {"edid", "read", path("no folder/unit.hex")},
                                                     {"autorun", "-o", path("folder.hex")},
                                                     {"autorun", "-o", "/dev/full"},
                                                     {"autorun", "-o", path("pipe.csv")}}) {
        const test::program_end ended = run(words);
        EXPECT_EQ(ended.status, 3) << testing::PrintToString(words);
        EXPECT_TRUE(ended.err.starts_with("velotrace_cli: ") && ended.err.size() > 30) << ended.err;
        EXPECT_EQ(ended.out, "");
    }
}

TEST_F(cli_failures, a_file_that_cannot_be_read) {
    plug_generator_in();
    std::filesystem::create_directory(folder / "folder.hex");
    ASSERT_EQ(::mkfifo((folder / "pipe.hex").c_str(), 0600), 0);
    for (const std::string name : {"folder.hex", "pipe.hex", "missing.hex"}) {
        for (const strings& words : std::vector<strings>{{"edid", "write", path(name)},
                                                         {"edid", "verify", path(name)},
                                                         {"edid", "stamp", path(name), "--serial", "1"},
                                                         {"autorun", path(name)}}) {
            const test::program_end ended = run(words);
            EXPECT_EQ(ended.status, 3) << testing::PrintToString(words) << ended.err;
            EXPECT_NE(ended.err.find(name), std::string::npos) << ended.err;
        }
    }
    EXPECT_EQ(received(), strings{});
}

TEST_F(cli_failures, an_empty_file) {
    plug_generator_in();
    folder.put("empty.bin", "");
    folder.put("empty.csv", "");
    for (const strings& words :
         std::vector<strings>{{"edid", "write", path("empty.bin")}, {"autorun", path("empty.csv")}}) {
        const test::program_end ended = run(words);
        EXPECT_EQ(ended.status, 3) << ended.err;
        EXPECT_EQ(ended.out, "");
        EXPECT_EQ(received(), strings{});
    }
}

TEST_F(cli_failures, a_file_without_edid_is_written_with_a_warning) {
    plug_generator_in();
    // the desk shows wrong checksums and lets the operator write
    folder.put("empty.hex", "");
    folder.put("text.hex", "This is no EDID.\r\n");
    for (const std::string name : {"empty.hex", "text.hex"}) {
        const test::program_end ended = run({"edid", "write", path(name)});
        EXPECT_EQ(ended.status, 0);
        EXPECT_EQ(ended.err, "velotrace_cli: " + path(name) + ": the checksum of block 0 is wrong\n");
    }
}

TEST_F(cli_failures, wrong_checksums_of_a_file_are_reported) {
    plug_generator_in();
    put_unit();
    std::string edid = folder.content("unit.bin");
    folder.put("one block.bin", edid.substr(0, 128));
    EXPECT_EQ(run({"edid", "write", path("one block.bin")}).err, "");
    ++edid[200];
    folder.put("wrong.bin", edid);
    EXPECT_EQ(run({"edid", "write", path("wrong.bin")}).err,
              "velotrace_cli: " + path("wrong.bin") + ": the checksum of block 1 is wrong\n");
}

TEST_F(cli_failures, a_ddc_file_without_header) {
    plug_generator_in();
    folder.put("unit.ddc", std::string(1000, 'x'));
    const test::program_end ended = run({"edid", "write", path("unit.ddc")});
    // the desk looks for ever
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.err, "velotrace_cli: Looking for the EDID's header in " + path("unit.ddc") + ": nothing happens\n");
    EXPECT_EQ(received(), strings{});
}

TEST_F(cli_failures, a_bad_autorun_file_sends_nothing) {
    plug_generator_in();
    folder.put("steps.csv", "step,timing,pattern,seconds\n1,7,3,5\n2,7,3,4\n");
    const test::program_end ended = run({"autorun", path("steps.csv")});
    EXPECT_EQ(ended.status, 3);
    EXPECT_NE(ended.err.find("steps.csv, line 3: 4 seconds are not on offer"), std::string::npos) << ended.err;
    EXPECT_EQ(received(), strings{});
}

// standard output

TEST_F(cli_failures, a_full_standard_output) {
    plug_generator_in();
    for (const strings& words : std::vector<strings>{{"status"}, {"--json", "list", "timings"}, {"--help"}}) {
        const test::program_end ended = run(words, {.output = "/dev/full"});
        EXPECT_EQ(ended.status, 3);
        EXPECT_EQ(ended.err, "velotrace_cli: standard output can't be written to\n");
    }
}

TEST_F(cli_failures, a_full_standard_output_names_the_next_unit) {
    plug_generator_in();
    const test::program_end ended =
        run({"edid", "stamp", put_unit(), "--serial", "7", "--count", "2"}, {.output = "/dev/full"});
    EXPECT_EQ(ended.status, 3);
    EXPECT_NE(ended.err.find("go on with --serial 8"), std::string::npos) << ended.err;
}

} // namespace
} // namespace desk

#endif
