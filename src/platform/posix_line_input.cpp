#include "platform/end_request.h"
#include "platform/line_input.h"

#include <array>
#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace desk {

std::optional<std::string> line_input::next() {
    while (true) {
        const std::size_t end = waiting_.find('\n');
        if (end != std::string::npos || (ended_ && !waiting_.empty())) {
            std::string line = waiting_.substr(0, end);
            waiting_.erase(0, end == std::string::npos ? end : end + 1);
            if (line.ends_with('\r')) line.pop_back();
            return line;
        }
        if (ended_ || request_.received()) return std::nullopt;
        std::array<pollfd, 2> polled{pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{request_.descriptor(), POLLIN, 0}};
        if (::poll(polled.data(), polled.size(), -1) < 0 && errno != EINTR) return std::nullopt;
        if (polled[1].revents != 0 || polled[0].revents == 0) continue;
        std::array<char, 4096> chunk{};
        const ssize_t got = ::read(STDIN_FILENO, chunk.data(), chunk.size());
        if (got < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (got <= 0)
            ended_ = true;
        else
            waiting_.append(chunk.data(), static_cast<std::size_t>(got));
    }
}

} // namespace desk
