#include "cli/command_line.h"

#include "platform/end_request.h"
#include "runtime/version.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace desk::cli {
namespace {

using words = std::vector<std::string>;

class command_line_test : public testing::Test {
protected:
    command_line parse(const words& w) { return parse_arguments(w, keys); }

    /// The message about a bad command line; empty if it is accepted.
    std::string problem_of(const words& w) {
        return problem([&] { parse(w); });
    }
    static std::string problem_of_line(const words& w) {
        return problem([&] { parse_line(w); });
    }

    void expect_command(const words& w) {
        EXPECT_EQ(problem_of(w), "") << testing::PrintToString(w);
        EXPECT_TRUE(std::holds_alternative<command>(parse(w).task)) << testing::PrintToString(w);
        EXPECT_TRUE(std::get<command>(parse(w).task)) << testing::PrintToString(w);
    }
    void expect_misused(const words& w) { EXPECT_NE(problem_of(w), "") << testing::PrintToString(w); }

    void expect_batch(const words& w, bool keep_going) {
        const command_line line = parse(w);
        ASSERT_TRUE(std::holds_alternative<batch_of_commands>(line.task)) << testing::PrintToString(w);
        EXPECT_EQ(std::get<batch_of_commands>(line.task).keep_going, keep_going);
    }
    std::string shown_by(const words& w) {
        const command_line line = parse(w);
        const auto* const shown = std::get_if<shown_text>(&line.task);
        return shown == nullptr ? "" : shown->text;
    }

private:
    static std::string problem(const auto& work) {
        try {
            work();
        } catch (const command_failure& f) {
            EXPECT_EQ(f.status(), outcome::misused);
            return f.what();
        }
        return "";
    }

    end_request request;
    line_input keys{request};
};

TEST_F(command_line_test, accepts_every_command) {
    for (const words& w : std::vector<words>{
             {"version"},
             {"list", "timings"},
             {"list", "patterns"},
             {"status"},
             {"set", "timing", "7"},
             {"set", "timing", "[07] 720x400 85Hz"},
             {"set", "pattern", "Grey"},
             {"panel"},
             {"panel", "output", "hdmi"},
             {"panel", "reset"},
             {"color"},
             {"color", "0", "128", "255"},
             {"string"},
             {"string", "HELLO"},
             {"string", "123456789012"},
             {"string", ""},
             {"favorites", "timings"},
             {"favorites", "patterns", "1", "23"},
             {"favorites", "timings", "--all"},
             {"favorites", "patterns", "--none"},
             {"autorun"},
             {"autorun", "-o", "steps.csv"},
             {"autorun", "steps.csv"},
             {"edid", "read", "-"},
             {"edid", "read", "unit.hex", "--c"},
             {"edid", "read", "UNIT.BIN", "--source", "vga"},
             {"edid", "read", "my unit.hex", "--source", "hdmi-in"},
             {"edid", "read", "--source", "hdmi-out", "unit.hex"},
             {"edid", "write", "unit.ddc"},
             {"edid", "write", "unit.bin", "--no-verify"},
             {"edid", "verify", "unit.hex"},
             {"edid", "erase", "--yes"},
             {"edid", "stamp", "unit.hex", "--serial", "1001", "--count", "500", "--step", "2", "--wait-key"},
         })
        expect_command(w);
}

TEST_F(command_line_test, needs_one_whole_command) {
    for (const words& w : std::vector<words>{
             {},
             {""},
             {"list"},
             {"set"},
             {"favorites"},
             {"edid"},
             {"help"},
             {"Status"},
             {"stat"},
             {"status", "status"},
             {"status", "now"},
             {"version", "1"},
             {"list", "timing"},
             {"list", "timings", "7"},
             {"set", "timing"},
             {"set", "timing", "7", "8"},
             {"set", "timings", "7"},
             {"edid", "erase", "--yes", "unit.hex"},
             {"edid", "read"},
             {"edid", "write"},
             {"edid", "verify"},
             {"edid", "read", "a.hex", "b.hex"},
         })
        expect_misused(w);
}

TEST_F(command_line_test, names_the_word_that_is_not_understood) {
    EXPECT_EQ(problem_of({"stat"}), "\"stat\" is not understood; see --help");
    EXPECT_EQ(problem_of({"status", "--fast"}), "\"--fast\" is not understood; see --help");
}

TEST_F(command_line_test, has_three_options) {
    const command_line all = parse({"--port", "3", "--json", "--quiet", "status"});
    EXPECT_EQ(all.port, "3");
    EXPECT_TRUE(all.style.as_json);
    EXPECT_TRUE(all.style.quiet);
    const command_line none = parse({"status"});
    EXPECT_EQ(none.port, std::nullopt);
    EXPECT_FALSE(none.style.as_json);
    EXPECT_FALSE(none.style.quiet);
}

TEST_F(command_line_test, takes_its_options_before_the_command_only) {
    expect_misused({"status", "--json"});
    expect_misused({"status", "--port", "1"});
    expect_misused({"--fast", "status"});
    expect_misused({"--port"});
    expect_misused({"--port", "1"});
    expect_misused({"--port", "1", "--port", "2", "status"});
}

TEST_F(command_line_test, takes_a_port_by_number_or_path) {
    for (const std::string port : {"1", "8", "/dev/ttyUSB0", "com1", "./3", "COM12", "my port"})
        EXPECT_EQ(parse({"--port", port, "status"}).port, port);
    EXPECT_EQ(parse({"--port=/dev/ttyUSB0", "status"}).port, "/dev/ttyUSB0");
    for (const std::string port : {"", "0", "9", "10", "01"})
        expect_misused({"--port", port, "status"});
}

TEST_F(command_line_test, keeps_the_style_of_a_bad_command_line) {
    EXPECT_TRUE(style_of({"--json", "nonsense"}).as_json);
    EXPECT_FALSE(style_of({"--json", "nonsense"}).quiet);
    EXPECT_TRUE(style_of({"--quiet"}).quiet);
    EXPECT_FALSE(style_of({}).as_json);
}

TEST_F(command_line_test, takes_values_of_the_panel) {
    for (const panel_group& group : panel_groups()) {
        for (const char* const value : group.values)
            expect_command({"panel", group.name, value});
        expect_misused({"panel", group.name});
        expect_misused({"panel", group.name, "maybe"});
        expect_misused({"panel", group.name, ""});
        expect_misused({"panel", group.name, group.values.front(), group.values.front()});
    }
    expect_misused({"panel", "volume", "1"});
    expect_misused({"panel", "reset", "now"});
    expect_misused({"panel", "Output", "hdmi"});
    expect_misused({"panel", ""});
    EXPECT_EQ(problem_of({"panel", "hdcp", "maybe"}), "hdcp needs one of off on");
    EXPECT_EQ(problem_of({"panel", "volume", "1"}), "the panel has no group \"volume\"; see panel --help");
}

TEST_F(command_line_test, takes_three_bytes_of_color) {
    expect_command({"color", "0", "0", "0"});
    expect_command({"color", "255", "255", "255"});
    for (const words& w : std::vector<words>{
             {"color", "1"},
             {"color", "1", "2"},
             {"color", "1", "2", "3", "4"},
             {"color", "256", "0", "0"},
             {"color", "0", "0", "-1"},
             {"color", "0", "0", "1.5"},
             {"color", "0", "0", "red"},
             {"color", "0", "0", ""},
             {"color", "0", "0", "0x10"},
             {"color", "0", "0", "99999999999999999999"},
             {"color", "0", "0", " 1"},
         })
        expect_misused(w);
}

TEST_F(command_line_test, takes_twelve_characters_that_the_generator_has) {
    expect_command(
        {"string", "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"});
    expect_command({"string", "\xE2\x82\xAC"}); // the euro sign
    expect_misused({"string", "1234567890123"});
    expect_misused({"string", "HELLO", "WORLD"});
    expect_misused({"string", "\xCE\xA9"}); // a Greek letter
    expect_misused({"string", "\xF0\x9F\x98\x80"});
}

TEST_F(command_line_test, takes_decimal_numbers_with_leading_zeros) {
    expect_command({"color", "008", "09", "0255"});
    expect_command({"favorites", "timings", "008", "010"});
    expect_command({"edid", "stamp", "unit.hex", "--serial", "0000001009", "--count", "08", "--step", "09"});
}

TEST_F(command_line_test, takes_no_string_that_cannot_be_typed) {
    for (const std::string& text :
         {std::string("a\nb"), std::string("a\0b", 3), std::string("\x1B[2J"), std::string("\x7F")})
        expect_misused({"string", text});
}

TEST_F(command_line_test, takes_any_other_string_as_it_is) {
    for (const char* const text : {"[a,b]", "{}", "%%", "/x", "++", "a=b", "-", "status", "color", "'", "\"", "#"})
        expect_command({"string", text});
    expect_command({"string", "--", "-x"});
    expect_command({"string", "--", "--all"});
    expect_misused({"string", "-x"});
    expect_misused({"panel", "++"});
    expect_misused({"color", "++"});
}

TEST_F(command_line_test, takes_rows_or_all_or_none) {
    for (const words& w : std::vector<words>{
             {"favorites", "timings", "1", "--all"},
             {"favorites", "timings", "--none", "1"},
             {"favorites", "timings", "--all", "--none"},
             {"favorites", "timings", "x"},
             {"favorites", "timings", "1,2"},
             {"favorites", "timings", ""},
             {"favorites", "timings", "0"},
             {"favorites", "timings", "-1"},
             {"favorites", "timings", "0x1"},
             {"favorites", "timings", "99999999999999999999"},
             {"favorites", "--all"},
         })
        expect_misused(w);
}

TEST_F(command_line_test, reads_or_sets_autorun) {
    expect_misused({"autorun", "a.csv", "b.csv"});
    expect_misused({"autorun", "a.csv", "-o", "b.csv"});
    expect_misused({"autorun", "-o"});
    expect_misused({"autorun", "-o", ""});
    expect_misused({"autorun", ""});
}

TEST_F(command_line_test, takes_files_of_the_desk) {
    for (const std::string file : {"", "unit", "unit.txt", "unit.hex.bak", "hex", "unit.ddc", "/dev/null"})
        expect_misused({"edid", "read", file});
    for (const std::string verb : {"write", "verify"}) {
        for (const std::string file : {"", "unit", "unit.txt", "-", "marlo_rs232.ini"})
            expect_misused({"edid", verb, file});
    }
    expect_misused({"edid", "stamp", "unit.txt", "--serial", "1"});
    expect_misused({"edid", "stamp", "-", "--serial", "1"});
    expect_misused({"edid", "read", "unit.bin", "--c"});
    expect_misused({"edid", "read", "UNIT.BIN", "--c"});
    expect_command({"edid", "read", "-", "--c"});
}

TEST_F(command_line_test, takes_no_file_name_with_a_zero_byte) {
    expect_misused({"edid", "read", std::string("unit.bin\0.hex", 13)});
    expect_misused({"edid", "write", std::string("unit.bin\0.hex", 13)});
    expect_misused({"autorun", std::string("a\0b", 3)});
    expect_misused({"autorun", "-o", std::string("a\0b", 3)});
}

TEST_F(command_line_test, takes_a_source_by_name) {
    for (const std::string verb : {"read", "write", "verify"}) {
        for (const std::string source : {"hdmi-out", "hdmi-in", "vga"})
            expect_command({"edid", verb, "unit.hex", "--source", source});
        for (const std::string source : {"", "hdmi", "HDMI-OUT", "0", "1", "2", "3"})
            expect_misused({"edid", verb, "unit.hex", "--source", source});
    }
}

TEST_F(command_line_test, erases_on_demand_only) {
    EXPECT_EQ(problem_of({"edid", "erase"}), "edid erase needs --yes: nothing brings the EDID back");
    expect_misused({"edid", "erase", "yes"});
    expect_misused({"edid", "erase", "--yes=false"});
}

TEST_F(command_line_test, stamps_numbers_of_32_bits) {
    const auto stamp = [](const words& options) {
        words w{"edid", "stamp", "unit.hex"};
        w.insert(w.end(), options.begin(), options.end());
        return w;
    };
    expect_command(stamp({"--serial", "0"}));
    expect_command(stamp({"--serial", "4294967295"}));
    expect_command(stamp({"--serial", "4294967286", "--count", "10"}));
    expect_command(stamp({"--serial", "4294967286", "--count", "4", "--step", "3"}));
    expect_command(stamp({"--serial", "0", "--count", "4294967295"}));
    expect_command(stamp({"--serial", "0", "--count", "2", "--step", "4294967295"}));
    for (const words& options : std::vector<words>{
             {},
             {"--count", "1"},
             {"--serial"},
             {"--serial", ""},
             {"--serial", "-1"},
             {"--serial", "4294967296"},
             {"--serial", "99999999999999999999"},
             {"--serial", "1.5"},
             {"--serial", "1e3"},
             {"--serial", "0x10"},
             {"--serial", "one"},
             {"--serial", "1", "--serial", "2"},
             {"--serial", "1", "--count", "0"},
             {"--serial", "1", "--count", "-1"},
             {"--serial", "1", "--step", "0"},
             {"--serial", "1", "--step", "-1"},
             {"--serial", "4294967287", "--count", "10"},
             {"--serial", "4294967287", "--count", "4", "--step", "3"},
             {"--serial", "1", "--count", "4294967295", "--step", "4294967295"},
         })
        expect_misused(stamp(options));
    EXPECT_EQ(problem_of(stamp({"--serial", "4294967295", "--count", "2"})),
              "the last serial number is beyond 4294967295");
}

TEST_F(command_line_test, takes_a_batch_instead_of_a_command) {
    expect_batch({"-"}, false);
    expect_batch({"-", "--keep-going"}, true);
    expect_batch({"--json", "-"}, false);
    expect_batch({"--port", "1", "--quiet", "-", "--keep-going"}, true);
    expect_batch({"--port=1", "-"}, false);
    EXPECT_TRUE(parse({"--json", "-"}).style.as_json);
    EXPECT_EQ(parse({"--port", "2", "-"}).port, "2");
    expect_misused({"-", "status"});
    expect_misused({"-", "-"});
    expect_misused({"--keep-going", "status"});
    expect_misused({"--port", "-"});
}

TEST_F(command_line_test, takes_lines_without_options_of_the_program) {
    EXPECT_EQ(problem_of_line({"status"}), "");
    EXPECT_EQ(problem_of_line({"set", "timing", "7"}), "");
    for (const words& w : std::vector<words>{{"--json", "status"},
                                             {"--port", "1", "status"},
                                             {"--quiet", "status"},
                                             {"--help"},
                                             {"status", "--help"},
                                             {"--version"},
                                             {"-"},
                                             {"batch"},
                                             {"nonsense"},
                                             {"set", "timing"},
                                             {""}})
        EXPECT_NE(problem_of_line(w), "") << testing::PrintToString(w);
}

TEST_F(command_line_test, waits_for_no_key_that_would_be_a_command) {
    EXPECT_EQ(problem_of_line({"edid", "stamp", "unit.hex", "--serial", "1", "--wait-key"}),
              "--wait-key reads standard input, which holds the commands");
    EXPECT_EQ(problem_of_line({"edid", "stamp", "unit.hex", "--serial", "1"}), "");
}

TEST_F(command_line_test, shows_help_for_each_command) {
    EXPECT_TRUE(shown_by({"--help"}).find("Exit status:") != std::string::npos);
    for (const words& w : std::vector<words>{{"version"},
                                             {"list"},
                                             {"list", "timings"},
                                             {"status"},
                                             {"set"},
                                             {"set", "timing"},
                                             {"panel"},
                                             {"color"},
                                             {"string"},
                                             {"favorites", "patterns"},
                                             {"autorun"},
                                             {"edid"},
                                             {"edid", "read"},
                                             {"edid", "stamp"}}) {
        words asked = w;
        asked.emplace_back("--help");
        std::string usage = "velotrace_cli";
        for (const std::string& word : w)
            usage += " " + word;
        EXPECT_NE(shown_by(asked).find(usage), std::string::npos) << shown_by(asked);
    }
    EXPECT_NE(shown_by({"panel", "--help"}).find("audio ext-7.1 ext-opt int-sine"), std::string::npos);
}

TEST_F(command_line_test, shows_the_version) {
    EXPECT_EQ(shown_by({"--version"}), version_line("velotrace_cli"));
    EXPECT_TRUE(shown_by({"status"}).empty());
}

} // namespace
} // namespace desk::cli
