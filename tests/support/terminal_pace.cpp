// Preloaded into both programs at a pseudo terminal: stops their clock while the system delays data in pseudo
// terminals. On a busy machine that can take a second, longer than a try of an exchange. Sends a byte through a
// terminal of its own before each wait to detect this.

#include <array>
#include <atomic>
#include <cstdlib>
#include <ctime>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr long long second = 1'000'000'000;

std::atomic<long long> delayed{0}; // nanoseconds so far

long long nanoseconds_of(const timespec& time) { return time.tv_sec * second + time.tv_nsec; }

long long real_time() {
    timespec time{};
    ::syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &time);
    return nanoseconds_of(time);
}

/// A raw pseudo terminal.
struct probe {
    int near_end = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    int far_end = -1;

    probe() {
        std::array<char, 64> name{};
        if (near_end < 0 || ::grantpt(near_end) != 0 || ::unlockpt(near_end) != 0 ||
            ::ptsname_r(near_end, name.data(), name.size()) != 0)
            std::abort();
        far_end = ::open(name.data(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        termios raw{};
        ::tcgetattr(far_end, &raw);
        ::cfmakeraw(&raw);
        ::tcsetattr(far_end, TCSANOW, &raw);
    }
};

void pass() {
    static const probe line;
    const long long start = real_time();
    std::array<char, 16> bytes{};
    [[maybe_unused]] ssize_t count = ::write(line.near_end, "", 1);
    constexpr int longest_ms = 10000;
    pollfd arrived{line.far_end, POLLIN, 0};
    ::poll(&arrived, 1, longest_ms);
    count = ::read(line.far_end, bytes.data(), bytes.size());
    delayed += real_time() - start;
}

template <class Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// the C library's names for these
extern "C" {

int clock_gettime(clockid_t clock, timespec* time) {
    const auto result = static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
    if (result != 0 || clock != CLOCK_MONOTONIC) return result;
    const long long held = nanoseconds_of(*time) - delayed;
    *time = {held / second, held % second};
    return 0;
}

int nanosleep(const timespec* time, timespec* rest) {
    pass();
    return next<int (*)(const timespec*, timespec*)>("nanosleep")(time, rest);
}

int ppoll(pollfd* polled, nfds_t count, const timespec* timeout, const sigset_t* signals) {
    pass();
    return next<int (*)(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll")(polled, count, timeout, signals);
}
}
