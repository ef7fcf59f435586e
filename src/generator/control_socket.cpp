#include "generator/control_socket.h"

#include "generator/control_address.h"
#include "generator/own_name.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>
#include <utility>

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace desk {

namespace fs = std::filesystem;

namespace {

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

class socket_connection final : public control_connection {
public:
    explicit socket_connection(int descriptor) : descriptor_(descriptor) {}
    ~socket_connection() override { ::close(descriptor_); }
    socket_connection(const socket_connection&) = delete;
    socket_connection& operator=(const socket_connection&) = delete;

    int descriptor() const { return descriptor_; }

    input receive(std::string& text) override {
        std::array<char, 1024> chunk{};
        const ssize_t got = ::recv(descriptor_, chunk.data(), chunk.size(), 0);
        if (got == 0) return input::ended;
        if (got < 0) return errno == EAGAIN || errno == EINTR ? input::none : input::gone;
        text.append(chunk.data(), static_cast<std::size_t>(got));
        return input::some;
    }

    bool send(std::string& text) override {
        const ssize_t sent = ::send(descriptor_, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent < 0) return errno == EAGAIN || errno == EINTR;
        text.erase(0, static_cast<std::size_t>(sent));
        return true;
    }

private:
    int descriptor_;
};

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
        if (::lstat(made.c_str(), &status) != 0 || ::listen(listener_, static_cast<int>(control_clients::most)) != 0)
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
}

bool control_socket::is_this(const fs::path& path) const {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
}

void control_socket::add_polled(std::vector<pollfd>& polled) const {
    polled.push_back({listener_, POLLIN, 0});
    clients_.for_each_waiting([&](control_connection& one, control_clients::waits_for what) {
        const short event = what == control_clients::waits_for::sending ? POLLOUT : POLLIN;
        polled.push_back({static_cast<socket_connection&>(one).descriptor(), event, 0});
    });
}

bool control_socket::has_line() const { return clients_.has_line(); }

void control_socket::serve(const std::function<std::string(std::string_view line)>& reply_to) {
    accept_clients();
    clients_.serve(reply_to);
}

void control_socket::accept_clients() {
    for (int c = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC); c >= 0;
         c = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC))
        clients_.add(std::make_unique<socket_connection>(c));
}

} // namespace desk
