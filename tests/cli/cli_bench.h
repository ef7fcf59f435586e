#pragma once

#include "cli/answer.h"
#include "platform/port_file.h"
#include "runtime/failure.h"
#include "support/desk_files.h"
#include "support/running_program.h"
#include "support/signal_fixture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace desk::test {

struct program_end {
    int status = -1;
    std::string out;
    std::string err;
};

/// velotrace_cli in a folder of its own, which can have a simulated generator at port 1.
class cli_bench : public testing::Test {
protected:
    using strings = std::vector<std::string>;

    cli_bench() {
        folder.put("marlo_rs232.ini", usual_settings);
        folder.put("timing_pattern.ini", numbered_catalogue(25, 45));
        keep_ports_closed();
        const std::filesystem::path built = program_to_run(VELOTRACE_CLI);
        std::error_code error;
        std::filesystem::create_hard_link(built, folder / program, error);
        if (error) std::filesystem::copy_file(built, folder / program);
    }

    void plug_generator_in() {
        generator_.emplace(
            folder, strings{simulator_, "--timings", "25", "--patterns", "45", "--control", control(), path(line)});
        ASSERT_TRUE(eventually([this] { return has_line(); }));
    }
    /// Types a line into the simulator.
    void generator(const std::string& line) {
        running_program sender(folder, {simulator_, "--send", control(), line});
        ASSERT_EQ(sender.wait(), 0) << sender.err();
    }
    /// The commands that have reached the generator: "TIM007".
    strings received() const {
        strings commands;
        std::istringstream traffic(generator_->out());
        for (std::string line; std::getline(traffic, line);) {
            if (line.starts_with("> ")) commands.push_back(line.substr(2));
        }
        return commands;
    }
    bool has_received(const std::string& command) const {
        const strings all = received();
        return std::find(all.begin(), all.end(), command) != all.end();
    }

    std::unique_ptr<running_program> start(const strings& words, stream_setup streams = {}) {
        strings all{path(program)};
        all.insert(all.end(), words.begin(), words.end());
        return std::make_unique<running_program>(folder, all, std::move(streams));
    }
    /// Runs it to its end.
    program_end run(const strings& words, stream_setup streams = {}) {
        const auto program = start(words, std::move(streams));
        const int status = program->wait();
        return {status, program->out(), program->err()};
    }
    /// Runs a batch.
    program_end run_lines(const std::string& lines, const strings& words = {"-"}) {
        folder.put("lines", lines);
        return run(words, {.input = path("lines")});
    }

    /// Puts an EDID with correct checksums into a file and returns its path.
    std::string put_unit() {
        std::string edid(256, '\0');
        edid.replace(1, 6, 6, '\xFF');
        edid[20] = 100;
        edid[126] = 1; // one more block
        edid[128] = 2;
        edid[129] = 3;
        for (std::size_t block = 0; block < edid.size(); block += 128) {
            int sum = 0;
            for (std::size_t i = 0; i < 127; ++i)
                sum += static_cast<unsigned char>(edid[block + i]);
            edid[block + 127] = static_cast<char>(256 - sum % 256);
        }
        folder.put("unit.bin", edid);
        return path("unit.bin");
    }

    static cli::json last_object(const std::string& out) {
        const std::vector<cli::json> all = objects(out);
        return all.empty() ? cli::json() : all.back();
    }
    static std::vector<cli::json> objects(const std::string& out) {
        std::vector<cli::json> all;
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);)
            all.push_back(cli::json::parse(line, nullptr, false));
        return all;
    }

    std::string path(const std::string& name) const { return utf8_from_path(folder / name); }

    /// Expects a failure without answer; its sentence is on standard error, and in JSON.
    void expect_failure(const program_end& ended, int status, const std::string& sentence) {
        EXPECT_EQ(ended.status, status) << ended.err;
        EXPECT_EQ(ended.err, "velotrace_cli: " + sentence + "\n");
        EXPECT_EQ(ended.out, "");
    }

    /// Names of files, as far as the system allows, that a command line has to quote.
    static strings odd_file_names() {
        strings names{"with space.bin", "quote'.bin", "-dash.bin", "#1.bin", "\xC3\xA9.bin", "\xFF.bin"};
#ifndef _WIN32
        names.emplace_back("back\\slash.bin");
#endif
        return names;
    }

    temporary_directory folder;

    /// The device of port 1, once a generator is plugged in.
    std::string device() const {
#ifdef _WIN32
        return device_of_port_file(folder / line).value_or("");
#else
        return std::filesystem::read_symlink(folder / line).string();
#endif
    }

private:
#ifdef _WIN32
    static constexpr const char* program = "velotrace_cli.exe";
    static constexpr const char* line = "port1.txt";
    static constexpr const char* no_pipe = R"(\\.\pipe\velotrace_sim_that_nobody_serves)";

    // without a file, port 1 is a serial port of this machine
    void keep_ports_closed() const { folder.put(line, no_pipe); }
    bool has_line() const {
        try {
            return device() != no_pipe;
        } catch (const runtime_failure&) {
            return false; // not written yet
        }
    }
    std::string control() const { return R"(\\.\pipe\desk_test_)" + utf8_from_path(folder.path().filename()); }
#else
    static constexpr const char* program = "velotrace_cli";
    static constexpr const char* line = "line";

    // always a link: without one, port 1 is a serial port of this machine
    void keep_ports_closed() const { std::filesystem::create_symlink(line, folder / "com1"); }
    bool has_line() const { return folder.has(line); }
    std::string control() const { return path("control"); }
#endif

    const std::string simulator_ = utf8_from_path(program_to_run(VELOTRACE_SIM));
    std::optional<running_program> generator_;
};

} // namespace desk::test
