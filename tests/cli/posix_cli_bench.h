#pragma once

#include "cli/answer.h"
#include "support/desk_files.h"
#include "support/signal_fixture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desk::test {

/// Waits until it is true; false: it was not within a minute.
inline bool eventually(const std::function<bool()>& condition) {
    for (int i = 0; i < 60000; ++i) {
        if (condition()) return true;
        ::usleep(1000);
    }
    return condition();
}

/// Where the standard streams of a program lead.
struct stream_setup {
    std::string input = "/dev/null";    ///< a file; empty: a pipe that the test writes to; "closed"
    std::string output = {};            ///< a file; empty: one of its own; "closed"
    std::string errors = {};            ///< the same
    std::function<void()> prepare = {}; ///< runs in the child before the program
};

/// A program that runs beside the test, in the test's folder, and ends with the test at the latest.
class running_program {
public:
    running_program(const temporary_directory& folder, const std::vector<std::string>& words, stream_setup streams = {})
        : folder_(folder), name_(std::to_string(++count())) {
        int ends[2] = {-1, -1};
        if (streams.input.empty() && ::pipe2(ends, O_CLOEXEC) != 0) ADD_FAILURE() << "no pipe";
        if (streams.output.empty()) streams.output = (folder / ("out" + name_)).string();
        if (streams.errors.empty()) streams.errors = (folder / ("err" + name_)).string();
        std::vector<char*> arguments;
        for (const std::string& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        id_ = ::fork();
        if (id_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            // a test that runs in the background ignores some of them
            for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
                std::signal(number, SIG_DFL);
            connect(STDIN_FILENO, streams.input, ends[0], O_RDONLY);
            connect(STDOUT_FILENO, streams.output, -1, O_WRONLY | O_CREAT | O_APPEND);
            connect(STDERR_FILENO, streams.errors, -1, O_WRONLY | O_CREAT | O_APPEND);
            const char* const preloaded = std::getenv("LD_PRELOAD");
            const std::string all = std::string(TERMINAL_PACE) + (preloaded == nullptr ? "" : ":") +
                                    (preloaded == nullptr ? "" : preloaded);
            ::setenv("LD_PRELOAD", all.c_str(), 1);
            // whoever runs the tests may not be allowed to write where they start
            if (::chdir(folder_.path().c_str()) != 0) ::_exit(125);
            if (streams.prepare) streams.prepare();
            ::execv(arguments.front(), arguments.data());
            ::_exit(127);
        }
        if (ends[0] >= 0) ::close(ends[0]);
        keyboard_ = ends[1];
    }
    ~running_program() {
        end_input();
        if (id_ > 0) ::kill(id_, SIGKILL);
        if (id_ > 0) ::waitpid(id_, nullptr, 0);
    }
    running_program(const running_program&) = delete;
    running_program& operator=(const running_program&) = delete;

    int id() const { return id_; }
    /// Tells its files from those of others: "out7" and "err7".
    const std::string& name() const { return name_; }
    void type(const std::string& text) const {
        EXPECT_EQ(::write(keyboard_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void end_input() {
        if (keyboard_ >= 0) ::close(std::exchange(keyboard_, -1));
    }
    void signal(int number) const { ::kill(id_, number); }
    std::string out() const { return folder_.content("out" + name_); }
    std::string err() const { return folder_.content("err" + name_); }

    bool runs() const {
        return ::waitid(P_PID, static_cast<id_t>(id_), &info_, WEXITED | WNOHANG | WNOWAIT) == 0 && info_.si_pid == 0;
    }

    /// Waits for its end and returns the exit status; the negative number of the signal that ended it.
    int wait() {
        end_input();
        return wait_with_open_input();
    }
    int wait_with_open_input() {
        EXPECT_TRUE(eventually([this] { return !runs(); })) << "it does not end";
        if (runs()) signal(SIGKILL);
        int status = 0;
        ::waitpid(std::exchange(id_, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    static int& count() {
        static int number = 0;
        return number;
    }
    static void connect(int stream, const std::string& file, int pipe, int flags) {
        if (file == "closed") {
            ::close(stream);
            return;
        }
        const int opened = file.empty() ? pipe : ::open(file.c_str(), flags | O_NOCTTY | O_CLOEXEC, 0666);
        if (opened < 0 || ::dup2(opened, stream) < 0) ::_exit(126);
    }

    const temporary_directory& folder_;
    std::string name_;
    pid_t id_ = 0;
    int keyboard_ = -1;
    mutable siginfo_t info_{};
};

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
        // always a link: without one, port 1 is a serial port of this machine
        std::filesystem::create_symlink("line", folder / "com1");
        std::error_code error;
        std::filesystem::create_hard_link(VELOTRACE_CLI, folder / "velotrace_cli", error);
        if (error) std::filesystem::copy_file(VELOTRACE_CLI, folder / "velotrace_cli");
    }

    void plug_generator_in() {
        generator_.emplace(folder, strings{VELOTRACE_SIM, "--timings", "25", "--patterns", "45", "--control",
                                           path("control"), path("line")});
        ASSERT_TRUE(eventually([this] { return folder.has("line"); }));
    }
    /// Types a line into the simulator.
    void generator(const std::string& line) {
        running_program sender(folder, {VELOTRACE_SIM, "--send", path("control"), line});
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
        strings all{path("velotrace_cli")};
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

    std::string path(const std::string& name) const { return (folder / name).string(); }

    /// Expects a failure without answer; its sentence is on standard error, and in JSON.
    void expect_failure(const program_end& ended, int status, const std::string& sentence) {
        EXPECT_EQ(ended.status, status) << ended.err;
        EXPECT_EQ(ended.err, "velotrace_cli: " + sentence + "\n");
        EXPECT_EQ(ended.out, "");
    }

    temporary_directory folder;

private:
    std::optional<running_program> generator_;
};

} // namespace desk::test
