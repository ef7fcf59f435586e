#include "generator/control_socket.h"

#include "generator/control_address.h"
#include "generator/own_name.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace desk {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t most_clients = 16;
constexpr int kind_of_socket = SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC;

[[noreturn]] void fail(const fs::path& path, const std::string& why) {
    throw runtime_failure(failure::path_file_access_error, "the control socket " + utf8_from_path(path) + " " + why);
}

sockaddr_un address_of(const fs::path& path) {
    const std::optional<sockaddr_un> address = control_address(path);
    if (!address) fail(path, "can't be created: its path is too long");
    return *address;
}

const sockaddr* plain(const sockaddr_un& address) { return reinterpret_cast<const sockaddr*>(&address); }

std::error_code bind_for_user_alone(int socket, const fs::path& path) {
    const sockaddr_un address = address_of(path);
    // no other user is able to connect, even for a moment
    const mode_t usual = ::umask(S_IXUSR | S_IRWXG | S_IRWXO);
    const int error = ::bind(socket, plain(address), sizeof address) == 0 ? 0 : errno;
    ::umask(usual);
    return {error == EADDRINUSE ? EEXIST : error, std::generic_category()};
}

/// The error of connecting to the socket; 0: none.
int connection_error(const fs::path& path) {
    const sockaddr_un address = address_of(path);
    const int attempt = ::socket(AF_UNIX, kind_of_socket, 0);
    const int error = ::connect(attempt, plain(address), sizeof address) == 0 ? 0 : errno;
    ::close(attempt);
    return error;
}

/// `there` is what currently has the name `path`.
void expect_left_by_simulator(const fs::path& there, const fs::path& path) {
    struct stat status {};
    if (::lstat(there.c_str(), &status) != 0) return;
    if (!S_ISSOCK(status.st_mode) || status.st_uid != ::geteuid() || (status.st_mode & 0777) != (S_IRUSR | S_IWUSR))
        fail(path, "can't be created: something else has this name");
    if (connection_error(there) != ECONNREFUSED) fail(path, "can't be created: another simulator listens there");
}

} // namespace

control_socket::control_socket(fs::path path) : path_(std::move(path)) {
    listener_ = ::socket(AF_UNIX, kind_of_socket, 0);
    fs::path made;
    try {
        made = make_beside(path_, [this](const fs::path& beside) { return bind_for_user_alone(listener_, beside); });
        struct stat status {};
        if (::lstat(made.c_str(), &status) != 0 || ::listen(listener_, most_clients) != 0)
            fail(path_, "can't be used: " + std::string(std::strerror(errno)));
        device_ = status.st_dev;
        inode_ = status.st_ino;
        take_name(
            made, path_, [this](const fs::path& there) { expect_left_by_simulator(there, path_); },
            [this](const fs::path& there) { return is_this(there); });
    } catch (const runtime_failure&) {
        if (!made.empty()) ::unlink(made.c_str());
        ::close(listener_);
        throw;
    }
}

control_socket::~control_socket() {
    give_up_name(path_, [this](const fs::path& there) { return is_this(there); });
    ::close(listener_);
    for (const client& c : clients_)
        ::close(c.descriptor);
}

bool control_socket::is_this(const fs::path& path) const {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
}

void control_socket::add_polled(std::vector<pollfd>& polled) const {
    polled.push_back({listener_, POLLIN, 0});
    for (const client& c : clients_) {
        // a program that does not read its replies is not read from
        if (!c.unsent.empty())
            polled.push_back({c.descriptor, POLLOUT, 0});
        else if (!c.ended)
            polled.push_back({c.descriptor, POLLIN, 0});
    }
}

bool control_socket::has_line() const {
    return std::any_of(clients_.begin(), clients_.end(),
                       [](const client& c) { return c.unsent.empty() && c.lines.has_line(); });
}

void control_socket::serve(const std::function<std::string(std::string_view line)>& reply_to) {
    accept_clients();
    const auto last = clients_.size();
    auto c = clients_.begin();
    for (std::size_t i = 0; i < last; ++i) {
        const auto next = std::next(c);
        send_to(*c);
        if (c->unsent.empty() && !c->lines.has_line()) read_from(*c);
        if (c->unsent.empty()) {
            if (const std::optional<std::string> line = c->lines.next()) {
                const std::string reply = reply_to(*line);
                if (!reply.empty()) c->unsent += reply + "\n";
                send_to(*c);
                clients_.splice(clients_.end(), clients_, c);
            }
        }
        c = next;
    }
    clients_.remove_if([](const client& one) {
        const bool over = one.gone || (one.ended && one.unsent.empty() && !one.lines.has_line());
        if (over) ::close(one.descriptor);
        return over;
    });
}

void control_socket::accept_clients() {
    for (int c = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC); c >= 0;
         c = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC)) {
        if (clients_.size() == most_clients) {
            // programs that hang do not lock out others
            ::close(clients_.front().descriptor);
            clients_.pop_front();
        }
        clients_.push_back({.descriptor = c, .lines = {}, .unsent = {}});
    }
}

void control_socket::read_from(client& c) {
    if (c.ended || c.gone) return;
    std::array<char, 1024> chunk{};
    const ssize_t got = ::recv(c.descriptor, chunk.data(), chunk.size(), 0);
    if (got > 0) {
        c.lines.add({chunk.data(), static_cast<std::size_t>(got)});
    } else if (got == 0) {
        c.ended = true;
        c.lines.end();
    } else if (errno != EAGAIN && errno != EINTR) {
        c.gone = true;
    }
}

void control_socket::send_to(client& c) {
    if (c.unsent.empty() || c.gone) return;
    const ssize_t sent = ::send(c.descriptor, c.unsent.data(), c.unsent.size(), MSG_NOSIGNAL);
    if (sent > 0)
        c.unsent.erase(0, static_cast<std::size_t>(sent));
    else if (sent < 0 && errno != EAGAIN && errno != EINTR)
        c.gone = true;
}

} // namespace desk
