#include "platform/end_request.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>

#include <fcntl.h>
#include <unistd.h>

namespace desk {

namespace {

constexpr std::array<int, 3> ending_signals{SIGTERM, SIGINT, SIGHUP};

// A signal handler has access to nothing else.
std::atomic<bool> request_came = false;
std::atomic<int> write_end = -1;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

int read_end = -1;
std::array<struct sigaction, ending_signals.size()> actions_before{};

extern "C" void note_end_request(int /*number*/) {
    const int error_before = errno;
    // later requests change nothing: a closing terminal or a service manager sends several
    if (!request_came.exchange(true)) {
        const char byte = 0;
        [[maybe_unused]] const ssize_t written = ::write(write_end, &byte, 1);
    }
    errno = error_before;
}

} // namespace

end_request::end_request() {
    request_came = false;
    std::array<int, 2> ends{-1, -1};
    if (::pipe(ends.data()) == 0) {
        for (const int end : ends) {
            ::fcntl(end, F_SETFD, FD_CLOEXEC);
            ::fcntl(end, F_SETFL, O_NONBLOCK);
        }
    }
    read_end = ends[0];
    write_end = ends[1];
    for (std::size_t i = 0; i < ending_signals.size(); ++i) {
        ::sigaction(ending_signals.at(i), nullptr, &actions_before.at(i));
        if (actions_before.at(i).sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = note_end_request;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        ::sigaction(ending_signals.at(i), &action, nullptr);
    }
    // writing to a pipe without a reader, or from the background, must not end or stop the program
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGTTOU, SIG_IGN);
}

end_request::~end_request() {
    for (std::size_t i = 0; i < ending_signals.size(); ++i)
        ::sigaction(ending_signals.at(i), &actions_before.at(i), nullptr);
    const int unused = write_end.exchange(-1);
    if (unused >= 0) ::close(unused);
    if (read_end >= 0) ::close(read_end);
    read_end = -1;
}

bool end_request::received() const { return request_came; }

int end_request::descriptor() const { return read_end; }

} // namespace desk
