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

/// A pseudo terminal in cooked mode, like that of a shell. The test holds its other end.
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

    /// Writes from the other end, like a keyboard or a generator.
    void type(const std::string& text) const {
        if (::write(master_, text.data(), text.size()) < 0) throw std::runtime_error("cannot write to the terminal");
    }
    /// Waits until `count` typed bytes can be read from the terminal; false: timed out.
    bool has_waiting(int count) const {
        int waiting = 0;
        for (int i = 0; i < 2000 && waiting != count; ++i) {
            ::ioctl(slave_, FIONREAD, &waiting);
            if (waiting != count) ::usleep(1000);
        }
        return waiting == count;
    }
    std::string shown() const {
        std::string all(4096, 0);
        pollfd ready{master_, POLLIN, 0};
        const ssize_t got = ::poll(&ready, 1, 100) > 0 ? ::read(master_, all.data(), all.size()) : 0;
        all.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        return all;
    }
    void hang_up() {
        ::close(master_);
        master_ = -1;
    }

private:
    int master_;
    int slave_ = -1;
    std::string name_;
};

/// A child process that runs `work` and then waits to be ended.
class child_process {
public:
    template <class Work>
    explicit child_process(const Work& work) {
        int ready[2] = {-1, -1};
        if (::pipe(ready) != 0) throw std::runtime_error("cannot create a pipe");
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
    /// False: it ended during `work`.
    bool works() const { return works_; }

    void end(int signal) {
        ::kill(id_, signal);
        wait();
    }

    /// Waits up to ten seconds for its end, then kills it; returns the signal that ended it.
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
