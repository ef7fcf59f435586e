#include "generator/pseudo_terminal.h"

#include "runtime/failure.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace desk {

namespace {

/// Returns the descriptor; throws if it is -1.
int checked(int result) {
    if (result >= 0) return result;
    throw runtime_failure(failure::path_file_access_error,
                          "no pseudo terminal is available: " + std::string(std::strerror(errno)));
}

void set_not_inherited(int descriptor) { checked(::fcntl(descriptor, F_SETFD, FD_CLOEXEC)); }

void set_raw(int descriptor) {
    termios line{};
    checked(::tcgetattr(descriptor, &line));
    ::cfmakeraw(&line);
    checked(::cfsetspeed(&line, B19200));
    checked(::tcsetattr(descriptor, TCSANOW, &line));
}

} // namespace

pseudo_terminal::pseudo_terminal() {
    try {
        master_ = checked(::posix_openpt(O_RDWR | O_NOCTTY));
        set_not_inherited(master_);
        checked(::fcntl(master_, F_SETFL, ::fcntl(master_, F_GETFL) | O_NONBLOCK));
        checked(::grantpt(master_));
        checked(::unlockpt(master_));
        const char* const name = ::ptsname(master_);
        checked(name == nullptr ? -1 : 0);
        name_ = name;
        slave_ = checked(::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
        set_raw(slave_);
    } catch (const runtime_failure&) {
        close_all();
        throw;
    }
    watch_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (watch_ >= 0) ::inotify_add_watch(watch_, name_.c_str(), IN_CLOSE);
}

pseudo_terminal::~pseudo_terminal() { close_all(); }

void pseudo_terminal::close_all() {
    for (int* descriptor : {&watch_, &slave_, &master_}) {
        if (*descriptor >= 0) ::close(*descriptor);
        *descriptor = -1;
    }
}

bytes pseudo_terminal::read() {
    bytes data(1024);
    const ssize_t got = ::read(master_, data.data(), data.size());
    data.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return data;
}

void pseudo_terminal::write(const bytes& data) {
    std::size_t sent = 0;
    while (sent < data.size()) {
        const ssize_t now = ::write(master_, data.data() + sent, data.size() - sent);
        if (now < 0 && errno == EINTR) continue;
        if (now <= 0) return;
        sent += static_cast<std::size_t>(now);
    }
}

void pseudo_terminal::free_for_next_desk() {
    std::array<char, 1024> events{};
    while (::read(watch_, events.data(), events.size()) > 0) {
    }
    ::ioctl(slave_, TIOCNXCL);
}

} // namespace desk
