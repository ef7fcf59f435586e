#pragma once

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desk::test {

/// A program with pipes to its standard input and output. Its standard error goes to the end of a file.
class piped_program {
public:
    using milliseconds = std::chrono::milliseconds;

    struct ending {
        int status = -1; ///< the exit status; -1: killed by a signal
        double largest_memory_mb = 0;
    };

    /// `words`: the path of the program and its arguments.
    piped_program(const std::vector<std::string>& words, const std::filesystem::path& errors) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe is available");
        std::signal(SIGPIPE, SIG_IGN);
        process_ = ::fork();
        if (process_ == 0) run(words, input[0], output[1], errors);
        ::close(input[0]);
        ::close(output[1]);
        input_ = input[1];
        output_ = output[0];
    }
    ~piped_program() {
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            wait();
        }
        end_input();
        ::close(output_);
    }
    piped_program(const piped_program&) = delete;
    piped_program& operator=(const piped_program&) = delete;

    int id() const { return process_; }

    void type(const std::string& text) const {
        // a pipe takes a short text whole
        if (::write(input_, text.data(), text.size()) < 0 && errno != EPIPE)
            throw std::runtime_error("can't write to the pipe");
    }
    void end_input() {
        if (input_ >= 0) ::close(input_);
        input_ = -1;
    }

    /// The next line of standard output without its line end; none after its end. Throws std::runtime_error if nothing
    /// arrives for this long.
    std::optional<std::string> next_line(milliseconds patience) {
        while (true) {
            const std::size_t end = waiting_.find('\n');
            if (end != std::string::npos) {
                std::string line = waiting_.substr(0, end);
                waiting_.erase(0, end + 1);
                return line;
            }
            pollfd ready{output_, POLLIN, 0};
            if (::poll(&ready, 1, static_cast<int>(patience.count())) == 0)
                throw std::runtime_error("the program prints nothing");
            std::array<char, 4096> chunk{};
            const ssize_t got = ::read(output_, chunk.data(), chunk.size());
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) return std::nullopt;
            waiting_.append(chunk.data(), static_cast<std::size_t>(got));
        }
    }

    /// Waits for its end.
    ending wait() {
        int status = 0;
        rusage used{};
        while (::wait4(process_, &status, 0, &used) < 0 && errno == EINTR) {
        }
        process_ = -1;
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, static_cast<double>(used.ru_maxrss) / 1024};
    }

private:
    [[noreturn]] static void run(const std::vector<std::string>& words, int input, int output,
                                 const std::filesystem::path& errors) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        std::signal(SIGPIPE, SIG_DFL);
        const int error_file = ::open(errors.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
        ::dup2(input, STDIN_FILENO);
        ::dup2(output, STDOUT_FILENO);
        ::dup2(error_file, STDERR_FILENO);
        std::vector<char*> argv;
        argv.reserve(words.size() + 1);
        for (const std::string& word : words)
            argv.push_back(const_cast<char*>(word.c_str()));
        argv.push_back(nullptr);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }

    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string waiting_; // printed, but not yet returned
};

} // namespace desk::test
