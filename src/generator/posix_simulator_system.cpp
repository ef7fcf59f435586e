#include "generator/simulator_system.h"

#include "generator/control_socket.h"
#include "generator/pseudo_terminal.h"
#include "generator/terminal_link.h"
#include "runtime/failure.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace desk {

namespace {

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

timespec timespec_of(std::chrono::nanoseconds time) {
    timespec parts{};
    parts.tv_sec = std::chrono::floor<std::chrono::seconds>(time).count();
    parts.tv_nsec = (time % std::chrono::seconds(1)).count();
    return parts;
}

class posix_simulator_system final : public simulator_system {
public:
    explicit posix_simulator_system(const sim_options& options) : link_path_(options.link) {
        if (!options.control.empty()) control_.emplace(options.control);
        signals_ = end_signals();
    }
    ~posix_simulator_system() override { ::close(signals_); }
    posix_simulator_system(const posix_simulator_system&) = delete;
    posix_simulator_system& operator=(const posix_simulator_system&) = delete;

    void plug() override {
        terminal_.emplace();
        try {
            if (!link_path_.empty()) link_.emplace(link_path_, terminal_->name());
        } catch (const runtime_failure&) {
            terminal_.reset();
            throw;
        }
    }

    void unplug() override {
        link_.reset();
        terminal_.reset();
    }

    bool is_plugged() const override { return terminal_.has_value(); }
    std::string line_name() const override { return terminal_ ? terminal_->name() : ""; }
    void write_to_desk(const bytes& data) override { terminal_->write(data); }

    news wait(bool reads_desk, std::optional<std::chrono::nanoseconds> longest) override {
        std::vector<pollfd> polled{pollfd{signals_, POLLIN, 0}, pollfd{input_, POLLIN, 0},
                                   pollfd{terminal_ && reads_desk ? terminal_->descriptor() : -1, POLLIN, 0},
                                   pollfd{terminal_ ? terminal_->close_watch() : -1, POLLIN, 0}};
        if (control_) control_->add_polled(polled);
        const timespec timeout = timespec_of(longest.value_or(std::chrono::nanoseconds(0)));
        news arrived;
        if (::ppoll(polled.data(), polled.size(), longest ? &timeout : nullptr, nullptr) < 0) return arrived;
        arrived.end = polled[0].revents != 0;
        if (arrived.end) return arrived;
        if (polled[3].revents != 0) terminal_->free_for_next_desk();
        if (polled[2].revents != 0) arrived.from_desk = terminal_->read();
        if (polled[1].revents != 0) read_input(arrived);
        return arrived;
    }

    bool control_has_line() const override { return control_ && control_->has_line(); }
    void serve_control(const std::function<std::string(std::string_view line)>& reply_to) override {
        if (control_) control_->serve(reply_to);
    }

private:
    void read_input(news& arrived) {
        std::array<char, 1024> chunk{};
        const ssize_t got = ::read(input_, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) return;
        if (got > 0) {
            arrived.typed.assign(chunk.data(), static_cast<std::size_t>(got));
            return;
        }
        // the line continues after the end of the input, or if the keyboard belongs to another program
        input_ = -1;
        arrived.typed_all = true;
    }

    std::filesystem::path link_path_;
    std::optional<pseudo_terminal> terminal_;
    std::optional<terminal_link> link_; // after the terminal: is removed before another can get its name
    std::optional<control_socket> control_;
    int signals_ = -1;
    int input_ = STDIN_FILENO;
};

} // namespace

std::unique_ptr<simulator_system> make_simulator_system(const sim_options& options) {
    return std::make_unique<posix_simulator_system>(options);
}

std::filesystem::path link_of_port_1(const std::filesystem::path& folder) { return folder / "com1"; }

} // namespace desk
