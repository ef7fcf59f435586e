#include "generator/control_client.h"

#include "generator/control_address.h"
#include "platform/command_line.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <optional>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace desk {

namespace {

constexpr std::chrono::milliseconds patience(10'000);

[[noreturn]] void fail(const std::string& why) { throw runtime_failure(failure::path_file_access_error, why); }

class connection {
public:
    explicit connection(const std::filesystem::path& path) {
        const std::optional<sockaddr_un> address = control_address(path);
        if (!address) fail(utf8_from_path(path) + " is too long for the path of a socket");
        socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (::connect(socket_, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) == 0) return;
        const int reason = errno;
        ::close(socket_);
        fail("no simulator listens at " + utf8_from_path(path) + ": " + std::strerror(reason));
    }
    ~connection() { ::close(socket_); }
    connection(const connection&) = delete;
    connection& operator=(const connection&) = delete;

    int descriptor() const { return socket_; }

    /// Returns false if the simulator has ended.
    bool send(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t sent = ::send(socket_, text.data(), text.size(), MSG_NOSIGNAL);
            if (sent < 0 && errno == EINTR) continue;
            if (sent < 0) return false;
            text.remove_prefix(static_cast<std::size_t>(sent));
        }
        return true;
    }

    void end_sending() const { ::shutdown(socket_, SHUT_WR); }

    /// Prints what has arrived. Returns false once nothing more will.
    bool print() const {
        std::array<char, 4096> chunk{};
        const ssize_t got = ::recv(socket_, chunk.data(), chunk.size(), 0);
        if (got < 0 && errno == EINTR) return true;
        if (got <= 0) return false;
        write_to_standard_output({chunk.data(), static_cast<std::size_t>(got)});
        return true;
    }

private:
    int socket_ = -1;
};

int send_one(const connection& simulator, const std::string& line) {
    simulator.send(line + "\n");
    simulator.end_sending();
    while (true) {
        pollfd answer{simulator.descriptor(), POLLIN, 0};
        if (::poll(&answer, 1, static_cast<int>(patience.count())) == 0) fail("the simulator does not answer");
        if (!simulator.print()) return 0;
    }
}

int converse(const connection& simulator) {
    if (::isatty(STDIN_FILENO) != 0)
        write_to_standard_error("Commands go to the simulator; \"help\" lists them, Ctrl+D ends.\n");
    bool typing = true;
    while (true) {
        std::array<pollfd, 2> polled{pollfd{simulator.descriptor(), POLLIN, 0},
                                     pollfd{typing ? STDIN_FILENO : -1, POLLIN, 0}};
        if (::poll(polled.data(), polled.size(), -1) < 0) continue;
        if (polled[0].revents != 0 && !simulator.print()) break;
        if (polled[1].revents == 0) continue;
        std::array<char, 1024> chunk{};
        const ssize_t got = ::read(STDIN_FILENO, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) continue;
        typing = got > 0;
        if (!typing)
            simulator.end_sending();
        else if (!simulator.send({chunk.data(), static_cast<std::size_t>(got)}))
            break;
    }
    if (typing) write_to_standard_error("The simulator has ended.\n");
    return 0;
}

} // namespace

int send_to_simulator(const std::filesystem::path& path, const std::string& line) {
    const connection simulator(path);
    return line.empty() ? converse(simulator) : send_one(simulator, line);
}

} // namespace desk
