// edid_report as its user calls it: command line, output, exit status.

#include "support/temporary_directory.h"
#include "support/terminal.h"
#include "support/translation_desk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#ifndef _WIN32
#include <sys/stat.h>
#include <sys/wait.h>
#endif

namespace desk {
namespace {

constexpr std::size_t date_line = 1;

/// An EDID of two blocks with a complete report.
edid_buffer good_edid(std::uint8_t serial_number = 1) {
    edid_buffer edid{};
    std::copy(edid_header.begin(), edid_header.end(), edid.begin());
    edid[12] = serial_number;
    for (const std::size_t place : {54U, 72U, 90U, 108U})
        edid.at(place) = 1;
    edid[128] = 0x02;
    edid[130] = 4;
    return edid;
}

std::string bytes_of_edid(const edid_buffer& edid, std::size_t count = edid_size) {
    return {reinterpret_cast<const char*>(edid.data()), count};
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", from)) {
        lines.push_back(text.substr(from, end - from));
        from = end + 2;
    }
    lines.push_back(text.substr(from));
    return lines;
}

/// The lines of a report file without date and time.
std::vector<std::string> report_of(const edid_buffer& edid) {
    test::translation_desk d;
    d.buffers.trans_buff = edid;
    d.report.report_build("", "");
    auto lines = lines_of(d.report.report_text + "\r\n");
    lines[date_line] = "";
    return lines;
}

std::vector<std::string> without_date(const std::string& report) {
    auto lines = lines_of(report);
    EXPECT_GT(lines.size(), date_line);
    EXPECT_FALSE(lines.at(date_line).empty());
    lines.at(date_line) = "";
    return lines;
}

class program : public testing::Test {
protected:
    int run(const std::string& words) { return run_into(words, folder.path() / "out", folder.path() / "err"); }
    int run_into(const std::string& words, const std::filesystem::path& output, const std::filesystem::path& errors) {
        const auto quoted = [](const std::filesystem::path& p) { return " \"" + p.string() + "\""; };
        const std::string command = "\"" EDID_REPORT "\" " + words + " >" + quoted(output) + " 2>" + quoted(errors);
#ifdef _WIN32
        // the command interpreter removes the first and the last quote
        const int status = std::system(("\"" + command + "\"").c_str());
#else
        const int status = std::system(command.c_str());
#endif
        out = folder.content("out");
        err = folder.content("err");
#ifdef _WIN32
        return status;
#else
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
    }
    std::string in_folder(const std::string& name) const { return "\"" + (folder.path() / name).string() + "\""; }

    test::temporary_directory folder;
    std::string out;
    std::string err;
};

TEST_F(program, shows_its_usage) {
    EXPECT_EQ(run("--help"), 0);
    EXPECT_TRUE(out.starts_with("usage: edid_report [--format FORMAT] [-j N] [-o FOLDER] FILE|FOLDER...\n"));
    EXPECT_EQ(err, "");
    EXPECT_EQ(run("-h"), 0);
}

TEST_F(program, refuses_an_invalid_command_line) {
    for (const char* words :
         {"", "--format", "--format x", "--format pdf x", "-j", "-j 0 x", "-j two x", "-o", "--every x", "-x y"}) {
        EXPECT_EQ(run(words), 2) << words;
        EXPECT_EQ(out, "") << words;
        EXPECT_TRUE(err.starts_with("edid_report: ")) << words;
        EXPECT_TRUE(err.ends_with("; see edid_report --help\n")) << words;
    }
}

TEST_F(program, writes_the_report_that_the_desk_saves) {
    folder.put("one.bin", bytes_of_edid(good_edid()));
    EXPECT_EQ(run(in_folder("one.bin")), 0);
    EXPECT_EQ(without_date(out), report_of(good_edid()));
    EXPECT_EQ(err, "");
}

TEST_F(program, reads_every_kind_of_file) {
    std::string hex;
    for (const std::uint8_t byte : good_edid())
        hex += "0123456789ABCDEF"[byte / 16] + std::string(1, "0123456789ABCDEF"[byte % 16]) + " ";
    folder.put("a.hex", hex);
    folder.put("a.BIN", bytes_of_edid(good_edid()));
    folder.put("a.ddc", "captured" + bytes_of_edid(good_edid()));
    folder.put("a", bytes_of_edid(good_edid()));
    for (const char* name : {"a.hex", "a.BIN", "a.ddc", "a"}) {
        EXPECT_EQ(run(in_folder(name)), 0) << name;
        EXPECT_EQ(without_date(out), report_of(good_edid())) << name;
    }
}

TEST_F(program, reports_what_it_can_not_read_and_continues) {
    folder.put("empty.bin", "");
    folder.put("notes.txt", "no EDID");
    folder.put("x.hex", "12 X");
    folder.put("no_header.ddc", std::string(300, '\x05'));
    folder.put("one.bin", bytes_of_edid(good_edid()));
    for (const char* name : {"empty.bin", "notes.txt", "x.hex", "no_header.ddc", "missing.bin"}) {
        EXPECT_EQ(run(in_folder(name) + " " + in_folder("one.bin")), 1) << name;
        EXPECT_EQ(without_date(out), report_of(good_edid())) << name;
        EXPECT_TRUE(std::regex_search(err, std::regex("edid_report: .*" + std::string(name) + ": .*\\.\n"))) << err;
    }
}

#ifdef __linux__
TEST_F(program, reports_that_standard_output_fails) {
    folder.put("one.bin", bytes_of_edid(good_edid()));
    for (const std::string& words : {std::string("--help"), in_folder("one.bin")})
        EXPECT_EQ(run_into(words, "/dev/full", folder.path() / "err"), 1) << words;
    EXPECT_EQ(err, "edid_report: writing to standard output failed.\n");
}
#endif

TEST_F(program, reports_that_it_can_not_create_the_folder) {
    folder.put("one.bin", bytes_of_edid(good_edid()));
    EXPECT_EQ(run("-o " + in_folder("one.bin/reports") + " " + in_folder("one.bin")), 1);
    EXPECT_EQ(out, "");
    EXPECT_TRUE(err.starts_with("edid_report: the folder " + (folder.path() / "one.bin/reports").string() +
                                " can't be created: "));
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1);
}

#ifndef _WIN32

/// One whose gamma can't be decoded.
edid_buffer bad_gamma() {
    edid_buffer edid = good_edid();
    edid[23] = 0xFF;
    return edid;
}

TEST_F(program, does_not_wait_for_a_pipe_named_as_a_report) {
    folder.put("one.bin", bytes_of_edid(good_edid()));
    folder.put("two.bin", bytes_of_edid(bad_gamma()));
    std::filesystem::create_directory(folder / "reports");
    for (const char* name : {"reports/one.txt", "reports/two.txt"})
        ASSERT_EQ(::mkfifo((folder / name).c_str(), 0600), 0);
    EXPECT_EQ(run("-o " + in_folder("reports") + " " + in_folder("one.bin") + " " + in_folder("two.bin")), 1);
    EXPECT_NE(err.find("one.txt is not a report and is not replaced."), std::string::npos) << err;
    for (const char* name : {"reports/one.txt", "reports/two.txt"})
        EXPECT_TRUE(std::filesystem::is_fifo(folder / name));
}

/// The final text of a terminal: after a carriage return the line is overwritten from its start.
std::vector<std::string> screen_of(const std::string& written) {
    std::vector<std::string> screen{""};
    std::size_t column = 0;
    for (const char c : written) {
        std::string& line = screen.back();
        if (c == '\r') {
            column = 0;
        } else if (c == '\n') {
            screen.emplace_back();
            column = 0;
        } else {
            if (column == line.size()) line.push_back(' ');
            line.at(column++) = c;
        }
    }
    return screen;
}

class program_on_terminal : public program {
protected:
    /// Only errors go to the terminal.
    int run_errors_there(const std::string& words) { return run_into(words, folder.path() / "out", screen.name()); }

    test::terminal screen;
};

TEST_F(program_on_terminal, shows_a_count_and_at_the_end_a_summary) {
    folder.put("one.bin", bytes_of_edid(good_edid()));
    EXPECT_EQ(run_errors_there(in_folder("one.bin")), 0);
    EXPECT_EQ(without_date(out), report_of(good_edid()));
    EXPECT_NE(screen.written().find("\r1 of 1"), std::string::npos);
    const std::vector<std::string> shown = screen_of(screen.written());
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_TRUE(std::regex_match(shown.front(), std::regex("edid_report: 1 report, 0 failures, \\d+\\.\\d seconds")))
        << shown.front();
}

TEST_F(program, has_its_count_in_no_report_and_in_no_message_on_a_terminal) {
    for (const std::size_t size : {edid_block_size, edid_size}) {
        std::filesystem::create_directories(folder.path() / "edids");
        for (int i = 0; i < 200; ++i)
            folder.put("edids/" + std::to_string(i), bytes_of_edid(good_edid(), size));
        test::terminal screen;
        EXPECT_EQ(run_into("-j1 " + in_folder("edids"), screen.name(), screen.name()), 0);
        EXPECT_NE(screen.written().find("\r200 of 200"), std::string::npos);
        const std::vector<std::string> shown = screen_of(screen.written());
        const auto lines_with = [&](const std::string& beginning) {
            return std::count_if(shown.begin(), shown.end(),
                                 [&](const std::string& line) { return line.starts_with(beginning); });
        };
        EXPECT_EQ(lines_with("edid_report: "), (size == edid_size ? 0 : 200) + 1) << "with the summary";
        EXPECT_EQ(lines_with("EDID Analysis Report "), 200);
        EXPECT_EQ(lines_with("END."), 200);
        for (const std::string& line : shown)
            EXPECT_EQ(line.find(" of 200"), std::string::npos) << line;
    }
}

TEST_F(program_on_terminal, shows_no_control_characters) {
    const std::string name = "a\x1B[2J\x01\x7F\xC3\xA4\xC2\x9B\r.bin";
    EXPECT_EQ(run_errors_there(in_folder(name)), 1);
    EXPECT_TRUE(screen.written().starts_with("edid_report: " + folder.path().string() + "/a?[2J??\xC3\xA4??.bin: "))
        << screen.written();
}

TEST_F(program_on_terminal, shows_a_monitors_name_without_its_control_characters) {
    edid_buffer edid = good_edid();
    const std::string name = "\x1B[2J\x9B"
                             "31m\a \xE4\n";
    std::fill_n(edid.begin() + 54, 18, std::uint8_t{0});
    edid[57] = 0xFC;
    std::copy(name.begin(), name.end(), edid.begin() + 59);
    folder.put("one.bin", bytes_of_edid(edid));
    EXPECT_EQ(run(in_folder("one.bin")), 0);
    EXPECT_NE(out.find("\x1B[2J\x9B"
                       "31m\a \xE4"),
              std::string::npos)
        << "a file gets the bytes of the EDID";
    EXPECT_EQ(run_into(in_folder("one.bin"), screen.name(), folder / "err"), 0);
    const std::string& written = screen.written();
    EXPECT_NE(written.find("?[2J\xE2\x80\xBA"
                           "31m? \xC3\xA4"),
              std::string::npos)
        << written;
    EXPECT_EQ(written.find_first_of("\x1B\a"), std::string::npos);
    EXPECT_EQ(lines_of(written).size(), lines_of(out).size());
}

#endif

TEST_F(program, is_documented_option_by_option) {
    std::ifstream page(MANUAL_PAGE);
    const std::string manual((std::istreambuf_iterator<char>(page)), std::istreambuf_iterator<char>());
    EXPECT_EQ(run("--help"), 0);
    for (const char* option : {"--format", "-j", "-o", "--help", "--version"}) {
        EXPECT_NE(out.find(option), std::string::npos) << option;
        EXPECT_NE(manual.find(std::regex_replace(std::string(option), std::regex("-"), "\\-")), std::string::npos)
            << option;
    }
}

} // namespace
} // namespace desk
