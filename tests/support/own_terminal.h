#pragma once

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace desk::test {

/// A pseudo terminal of the test's own, cooked as that of a shell. Its other end is held open by the test.
class own_terminal {
public:
    own_terminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0)
            throw std::runtime_error("no pseudo terminal is available");
        name_ = ::ptsname(master_);
        slave_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    ~own_terminal() {
        ::close(slave_);
        if (master_ >= 0) ::close(master_);
    }
    own_terminal(const own_terminal&) = delete;
    own_terminal& operator=(const own_terminal&) = delete;

    const std::string& name() const { return name_; }
    int slave() const { return slave_; }

    termios settings() const {
        termios found{};
        ::tcgetattr(slave_, &found);
        return found;
    }
    bool is_exclusive() const {
        int exclusive = 0;
        ::ioctl(slave_, TIOCGEXCL, &exclusive);
        return exclusive != 0;
    }
    void end_exclusive_mode() const { ::ioctl(slave_, TIOCNXCL); }

    /// As the program at the other end does: a keyboard, or a generator.
    void type(const std::string& text) const {
        if (::write(master_, text.data(), text.size()) < 0) throw std::runtime_error("the terminal takes nothing");
    }
    /// Waits until so many bytes that were typed can be read from the terminal; false: they don't come.
    bool has_waiting(int count) const {
        int waiting = 0;
        for (int i = 0; i < 2000 && waiting != count; ++i) {
            ::ioctl(slave_, FIONREAD, &waiting);
            if (waiting != count) ::usleep(1000);
        }
        return waiting == count;
    }
    /// What was written to the terminal.
    std::string shown() const {
        std::string all(4096, 0);
        pollfd ready{master_, POLLIN, 0};
        const ssize_t got = ::poll(&ready, 1, 100) > 0 ? ::read(master_, all.data(), all.size()) : 0;
        all.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        return all;
    }
    /// Pulls the cable.
    void hang_up() {
        ::close(master_);
        master_ = -1;
    }

private:
    int master_;
    int slave_ = -1;
    std::string name_;
};

/// A child of the test that does `work` and then lives until it is ended.
class child_process {
public:
    template <class Work>
    explicit child_process(Work&& work) {
        int ready[2] = {-1, -1};
        if (::pipe(ready) != 0) throw std::runtime_error("no pipe can be had");
        id_ = ::fork();
        if (id_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            work();
            static_cast<void>(::write(ready[1], "", 1));
            while (true)
                ::pause();
        }
        ::close(ready[1]);
        char done = 0;
        works_ = ::read(ready[0], &done, 1) == 1;
        ::close(ready[0]);
    }
    ~child_process() {
        if (id_ > 0) end(SIGKILL);
    }
    child_process(const child_process&) = delete;
    child_process& operator=(const child_process&) = delete;

    int id() const { return id_; }
    /// False: it has ended within `work`.
    bool works() const { return works_; }

    /// Ends it with this signal.
    void end(int signal) {
        ::kill(id_, signal);
        wait();
    }

    /// Waits ten seconds for its end, then ends it by force; gives the signal that it ended by.
    int wait() {
        int status = 0;
        for (int i = 0; ::waitpid(id_, &status, WNOHANG) == 0; ++i) {
            if (i == 10000) ::kill(id_, SIGKILL);
            ::usleep(1000);
        }
        id_ = 0;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

private:
    pid_t id_ = 0;
    bool works_ = false;
};

} // namespace desk::test
