#include "platform/end_request.h"
#include "platform/line_input.h"

#include <array>
#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace desk {

std::string line_input::read_more() const {
    while (!request_.received()) {
        std::array<pollfd, 2> polled{pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{request_.descriptor(), POLLIN, 0}};
        if (::poll(polled.data(), polled.size(), -1) < 0 && errno != EINTR) break;
        if (polled[1].revents != 0 || polled[0].revents == 0) continue;
        std::array<char, 4096> chunk{};
        const ssize_t got = ::read(STDIN_FILENO, chunk.data(), chunk.size());
        if (got < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        return {chunk.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
    }
    return "";
}

} // namespace desk
