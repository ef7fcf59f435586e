#include "generator/cable.h"
#include "generator/control_client.h"
#include "generator/control_socket.h"
#include "generator/fault_injector.h"
#include "generator/generator_on_line.h"
#include "generator/pseudo_terminal.h"
#include "generator/sim_options.h"
#include "generator/simulated_generator.h"
#include "generator/simulator_console.h"
#include "generator/terminal_link.h"
#include "platform/command_line.h"
#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "runtime/typed_lines.h"
#include "runtime/version.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <exception>
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

using std::chrono::nanoseconds;

nanoseconds now() {
    return std::chrono::duration_cast<nanoseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

/// A descriptor that becomes readable when the program is to end.
int end_signals() {
    // the program continues if nothing reads its output or it is not allowed to read the keyboard
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGTTIN, SIG_IGN);
    std::signal(SIGTTOU, SIG_IGN);
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    struct sigaction hang_up {};
    ::sigaction(SIGHUP, nullptr, &hang_up);
    // started with hang-ups ignored, it outlives the terminal
    if (hang_up.sa_handler != SIG_IGN) sigaddset(&ending, SIGHUP);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    return ::signalfd(-1, &ending, SFD_CLOEXEC);
}

class simulator {
public:
    explicit simulator(const sim_options& options) : options_(options), generator_(options.timings, options.patterns) {
        faults_.follow(options.faults);
        if (!options.control.empty()) control_.emplace(options.control);
    }

    /// Returns when a signal or the operator ends the program.
    void run() {
        const int signals = end_signals();
        plug();
        while (!console_.quit_asked()) {
            serve_line();
            std::vector<pollfd> polled{
                pollfd{signals, POLLIN, 0}, pollfd{input_, POLLIN, 0},
                pollfd{terminal_ && line_.ready_for_more(now()) ? terminal_->descriptor() : -1, POLLIN, 0},
                pollfd{terminal_ ? terminal_->close_watch() : -1, POLLIN, 0}};
            if (control_) control_->add_polled(polled);
            wait(polled);
            if (polled[0].revents != 0) break;
            if (polled[3].revents != 0) terminal_->free_for_next_desk();
            if (polled[2].revents != 0) line_.receive(terminal_->read(), now());
            if (polled[1].revents != 0) read_input();
            if (control_) control_->serve([this](std::string_view line) { return reply_to(line); });
        }
        ::close(signals);
    }

private:
    void serve_line() {
        const bytes due = line_.take_due(now());
        if (terminal_) terminal_->write(due);
        show_traffic();
        follow_cable();
    }

    void show_traffic() {
        const std::vector<std::string> log = line_.take_log();
        if (options_.quiet || log.empty()) return;
        for (const std::string& entry : log)
            write_to_standard_output(entry + "\n");
    }

    void follow_cable() {
        const bool was_out = std::exchange(pulled_out_, cable_.pulled_out(now()));
        if (pulled_out_ && terminal_) unplug();
        if (was_out && !pulled_out_ && !cable_.unplugged()) show(plug_problem());
    }

    void wait(std::vector<pollfd>& polled) const {
        timespec timeout{};
        std::optional<nanoseconds> due = line_.next_due();
        if (control_ && control_->has_line()) due = nanoseconds(0);
        if (due) {
            const nanoseconds left = std::max(nanoseconds(0), *due - now());
            timeout.tv_sec = std::chrono::floor<std::chrono::seconds>(left).count();
            timeout.tv_nsec = (left % std::chrono::seconds(1)).count();
        }
        if (::ppoll(polled.data(), polled.size(), due ? &timeout : nullptr, nullptr) >= 0) return;
        for (pollfd& one : polled)
            one.revents = 0;
    }

    void read_input() {
        std::array<char, 1024> chunk{};
        const ssize_t got = ::read(input_, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) return;
        if (got <= 0) {
            // the line continues after the end of the input, or if the keyboard belongs to another program
            input_ = -1;
            typed_.end();
        } else {
            typed_.add({chunk.data(), static_cast<std::size_t>(got)});
        }
        while (const std::optional<std::string> line = typed_.next())
            show(reply_to(*line));
    }

    static void show(const std::string& reply) {
        if (!reply.empty()) write_to_standard_output(reply + "\n");
    }

    std::string reply_to(std::string_view line) {
        if (line.size() > typed_lines::longest)
            return "A line has at most " + std::to_string(typed_lines::longest) + " bytes.";
        std::string reply = console_.take_line(line);
        // before the reply: its reader can then take the name of the link
        if (cable_.unplugged()) {
            unplug();
        } else if (!terminal_ && !pulled_out_) {
            const std::string problem = plug_problem();
            if (!problem.empty()) reply += (reply.empty() ? "" : "\n") + problem;
        }
        return reply;
    }

    /// Plugs the generator in and returns why it failed; empty: it did not.
    std::string plug_problem() {
        try {
            plug();
            return "";
        } catch (const runtime_failure& f) {
            return f.sentence();
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
        write_to_standard_output("VELOTRACE simulator on " + terminal_->name() + "\n");
    }

    void unplug() {
        link_.reset();
        terminal_.reset();
        line_.cut();
    }

    sim_options options_;
    simulated_generator generator_;
    fault_injector faults_{generator_};
    cable cable_;
    simulator_console console_{generator_, faults_, cable_};
    generator_on_line line_{faults_, cable_};
    std::optional<pseudo_terminal> terminal_;
    std::optional<terminal_link> link_; // after the terminal: is removed before another can get its name
    bool pulled_out_ = false;           // the cable, at the last look
    std::optional<control_socket> control_;
    int input_ = STDIN_FILENO;
    typed_lines typed_;
};

int run(const std::vector<std::string>& arguments) {
    sim_options options;
    try {
        options = sim_options_of(arguments);
    } catch (const runtime_failure& f) {
        write_to_standard_error("velotrace_sim: " + f.sentence() + "\nTry velotrace_sim --help.\n");
        return 2;
    }
    if (options.version) {
        write_to_standard_output(version_line("velotrace_sim"));
        return 0;
    }
    if (options.help) {
        write_to_standard_output(sim_help());
        return 0;
    }
    if (!options.send_to.empty()) return send_to_simulator(options.send_to, options.line);
    if (options.link.empty()) options.link = program_directory() / "com1";
    prepare_standard_streams();
    simulator(options).run();
    return 0;
}

} // namespace

} // namespace desk

int main(int count, char** words) {
    try {
        return desk::run({words + 1, words + count});
    } catch (const desk::runtime_failure& f) {
        desk::write_to_standard_error("velotrace_sim: " + f.sentence() + "\n");
    } catch (const std::exception& e) {
        desk::write_to_standard_error("velotrace_sim: " + std::string(e.what()) + "\n");
    }
    return 1;
}
