#include "terminal_pace.h"

#include <array>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace desk::gui {

terminal_pace::terminal_pace() : far_end_(::open(line_.name().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    turns_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&turns_, &QTimer::timeout, &turns_, [this] { pass(); });
    constexpr int turn_ms = 3;
    turns_.start(turn_ms);
}

terminal_pace::~terminal_pace() { ::close(far_end_); }

void terminal_pace::pass() {
    line_.write({0});
    constexpr int longest_ms = 10000;
    pollfd arrived{far_end_, POLLIN, 0};
    ::poll(&arrived, 1, longest_ms);
    std::array<char, 16> bytes{};
    [[maybe_unused]] const ssize_t got = ::read(far_end_, bytes.data(), bytes.size());
}

} // namespace desk::gui
