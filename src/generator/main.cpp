#include "generator/generator_on_line.h"
#include "generator/misbehaviour.h"
#include "generator/pseudo_terminal.h"
#include "generator/sim_options.h"
#include "generator/simulated_generator.h"
#include "generator/terminal_link.h"
#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "runtime/terminal_text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace desk {

namespace {

std::int64_t now_ns() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// A descriptor that becomes readable when the program shall end.
int end_signals() {
    // losing the reader of the output, or the right to read the keyboard, is no reason to end
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGTTIN, SIG_IGN);
    std::signal(SIGTTOU, SIG_IGN);
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    struct sigaction hang_up {};
    ::sigaction(SIGHUP, nullptr, &hang_up);
    // whoever starts it with hang-ups ignored wants it to outlive the terminal
    if (hang_up.sa_handler != SIG_IGN) sigaddset(&ending, SIGHUP);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    return ::signalfd(-1, &ending, SFD_CLOEXEC);
}

/// Without the three standard descriptors the terminal would get one of their numbers.
void fill_standard_descriptors() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = ::open("/dev/null", O_RDWR);
    if (descriptor > STDERR_FILENO) ::close(descriptor);
}

/// What somebody has typed, or the line has brought, must not work the terminal.
std::string shown_on(int descriptor, const std::string& text) {
    return ::isatty(descriptor) != 0 ? terminal_text(text) : text;
}

class simulator {
public:
    explicit simulator(const sim_options& options) : options_(options), generator_(options.timings, options.patterns) {
        misbehaviour_.follow(options.faults);
    }

    /// Returns when a signal or the operator ends it.
    void run() {
        const int signals = end_signals();
        plug();
        while (!misbehaviour_.quit_asked()) {
            serve_line();
            std::array<pollfd, 4> polled{
                pollfd{signals, POLLIN, 0}, pollfd{input_, POLLIN, 0},
                pollfd{terminal_ && line_.ready_for_more(now_ns()) ? terminal_->descriptor() : -1, POLLIN, 0},
                pollfd{terminal_ ? terminal_->close_watch() : -1, POLLIN, 0}};
            wait(polled);
            if (polled[0].revents != 0) break;
            if (polled[3].revents != 0) terminal_->free_for_next_desk();
            if (polled[2].revents != 0) line_.receive(terminal_->read(), now_ns());
            if (polled[1].revents != 0) read_input();
        }
        ::close(signals);
    }

private:
    void serve_line() {
        const bytes due = line_.take_due(now_ns());
        if (terminal_) terminal_->write(due);
        show_traffic();
        follow_cable();
    }

    void show_traffic() {
        const std::vector<std::string> log = line_.take_log();
        if (options_.quiet || log.empty()) return;
        for (const std::string& entry : log)
            std::cout << shown_on(STDOUT_FILENO, entry) << '\n';
        std::cout.flush();
    }

    void follow_cable() {
        const bool was_absent = std::exchange(absent_, line_.absent(now_ns()));
        if (absent_ && terminal_) unplug();
        if (was_absent && !absent_ && !misbehaviour_.unplugged()) plug_or_tell();
    }

    void wait(std::array<pollfd, 4>& polled) const {
        timespec timeout{};
        const std::optional<std::int64_t> due_ns = line_.next_due_ns();
        if (due_ns) {
            const std::int64_t left_ns = std::max<std::int64_t>(0, *due_ns - now_ns());
            timeout.tv_sec = left_ns / 1'000'000'000;
            timeout.tv_nsec = left_ns % 1'000'000'000;
        }
        if (::ppoll(polled.data(), polled.size(), due_ns ? &timeout : nullptr, nullptr) >= 0) return;
        for (pollfd& one : polled)
            one.revents = 0;
    }

    void read_input() {
        std::array<char, 1024> chunk{};
        const ssize_t got = ::read(input_, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) return;
        if (got <= 0) {
            // the end of the input, or a keyboard that belongs to another program: the line goes on
            input_ = -1;
            typed_ += '\n';
        } else {
            typed_.append(chunk.data(), static_cast<std::size_t>(got));
        }
        for (std::size_t end = typed_.find('\n'); end != std::string::npos; end = typed_.find('\n')) {
            take_line(typed_.substr(0, end));
            typed_.erase(0, end + 1);
        }
    }

    void take_line(const std::string& line) {
        const std::string reply = misbehaviour_.take_line(line);
        // whoever reads that it is off the line can take the link's name
        if (misbehaviour_.unplugged()) unplug();
        if (!reply.empty()) std::cout << shown_on(STDOUT_FILENO, reply) << std::endl;
        if (!misbehaviour_.unplugged() && !terminal_ && !absent_) plug_or_tell();
    }

    void plug_or_tell() {
        try {
            plug();
        } catch (const runtime_failure& f) {
            std::cout << shown_on(STDOUT_FILENO, f.sentence()) << std::endl;
        }
    }

    void plug() {
        terminal_.emplace();
        try {
            if (!options_.link.empty()) link_.emplace(options_.link, terminal_->name());
        } catch (const runtime_failure&) {
            terminal_.reset();
            throw;
        }
        std::cout << "VELOTRACE simulator on " << terminal_->name() << std::endl;
    }

    void unplug() {
        link_.reset();
        terminal_.reset();
        line_.cut();
    }

    sim_options options_;
    simulated_generator generator_;
    misbehaviour misbehaviour_{generator_};
    generator_on_line line_{misbehaviour_};
    std::optional<pseudo_terminal> terminal_;
    std::optional<terminal_link> link_; // behind the terminal: goes before its name can be given to another
    bool absent_ = false;               // the cable is out by chance
    int input_ = STDIN_FILENO;
    std::string typed_;
};

int run(const std::vector<std::string>& arguments) {
    sim_options options;
    try {
        options = sim_options_of(arguments);
    } catch (const runtime_failure& f) {
        std::cerr << "velotrace_sim: " << desk::shown_on(STDERR_FILENO, f.sentence())
                  << "\nTry velotrace_sim --help.\n";
        return 2;
    }
    if (options.help) {
        std::cout << sim_help();
        return 0;
    }
    if (options.link.empty()) {
        options.link = program_directory() / "com1";
        expect_no_hardware(options.link);
    }
    fill_standard_descriptors();
    simulator(options).run();
    return 0;
}

} // namespace

} // namespace desk

int main(int count, char** words) {
    try {
        return desk::run({words + 1, words + count});
    } catch (const desk::runtime_failure& f) {
        std::cerr << "velotrace_sim: " << desk::shown_on(STDERR_FILENO, f.sentence()) << '\n';
    } catch (const std::exception& e) {
        std::cerr << "velotrace_sim: " << desk::shown_on(STDERR_FILENO, e.what()) << '\n';
    }
    return 1;
}
