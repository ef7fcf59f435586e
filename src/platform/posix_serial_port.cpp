#include "platform/native_serial_port.h"

#include "platform/posix_port_problem.h"
#include "platform/posix_processes.h"
#include "runtime/failure.h"

#include <array>
#include <cerrno>
#include <functional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace desk {

namespace {

[[noreturn]] void fail(const std::string& why) { throw runtime_failure(failure::path_file_access_error, why); }

[[noreturn]] void cannot_be(const std::string& what, const std::filesystem::path& device) {
    fail(problem_of_use(device, what, errno));
}

/// An open device, not yet configured.
class opened_device {
public:
    explicit opened_device(const std::filesystem::path& device)
        : descriptor_(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        if (descriptor_ < 0) fail(problem_of_opening(device, errno));
    }
    ~opened_device() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    opened_device(const opened_device&) = delete;
    opened_device& operator=(const opened_device&) = delete;

    int get() const { return descriptor_; }
    int release() { return std::exchange(descriptor_, -1); }
    void close() { ::close(release()); }

private:
    int descriptor_;
};

/// Checks the device before it is opened, since opening can have effects: a serial line raises DTR.
dev_t check_before_opening(const std::filesystem::path& device, const process_table& processes) {
    struct stat status {};
    if (::stat(device.c_str(), &status) != 0) fail(problem_of_opening(device, errno));
    if (!S_ISCHR(status.st_mode)) fail(problem_of_file(device));
    if (const auto at_work = processes.at_terminal(status.st_rdev)) fail(problem_of_terminal(device, at_work));
    return status.st_rdev;
}

void expect_unused_terminal(const opened_device& opened, const std::filesystem::path& device, dev_t checked,
                            const process_table& processes) {
    if (::tcgetsid(opened.get()) >= 0) fail(problem_of_terminal(device, std::nullopt));
    struct stat status {};
    if (::fstat(opened.get(), &status) != 0) cannot_be("used as a serial port", device);
    // the link has changed meanwhile
    if (status.st_rdev == checked) return;
    if (const auto at_work = processes.at_terminal(status.st_rdev)) fail(problem_of_terminal(device, at_work));
}

/// The device of a port's number.
using device_finder = std::function<std::filesystem::path(int)>;

/// TIOCEXCL does not stop root; the lock does, between desks.
void lock(opened_device& opened, const std::filesystem::path& device, const process_table& processes) {
    if (::flock(opened.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
    // this desk must not be found as a holder
    opened.close();
    fail(problem_of_holder(device, processes.holder_of(device)));
}

class posix_serial_port final : public serial_port {
public:
    explicit posix_serial_port(device_finder device_of) : device_of_(std::move(device_of)) {}
    ~posix_serial_port() override { close_device(); }
    posix_serial_port(const posix_serial_port&) = delete;
    posix_serial_port& operator=(const posix_serial_port&) = delete;

    void open(int number) override {
        close_device();
        const std::filesystem::path device = device_of_(number);
        const process_table processes;
        const dev_t checked = check_before_opening(device, processes);
        opened_device opened(device);
        expect_unused_terminal(opened, device, checked, processes);
        lock(opened, device, processes);
        if (::tcgetattr(opened.get(), &found_) != 0) cannot_be("used as a serial port", device);
        device_ = opened.release();
        try {
            configure(device);
        } catch (const runtime_failure&) {
            close_device();
            throw;
        }
    }

    void close() override { close_device(); }

    std::size_t in_count() override {
        int waiting = 0;
        return device_ >= 0 && ::ioctl(device_, FIONREAD, &waiting) == 0 && waiting > 0
                   ? static_cast<std::size_t>(waiting)
                   : 0;
    }

    std::size_t out_count() override {
        send_rest();
        int unsent = 0;
        if (device_ < 0 || ::ioctl(device_, TIOCOUTQ, &unsent) != 0) unsent = 0;
        return rest_.size() + static_cast<std::size_t>(unsent > 0 ? unsent : 0);
    }

    void discard_input() override {
        if (device_ >= 0) ::tcflush(device_, TCIFLUSH);
    }

    void discard_output() override {
        rest_.clear();
        if (device_ >= 0) ::tcflush(device_, TCOFLUSH);
    }

    bytes read() override {
        bytes data;
        std::array<std::uint8_t, 1024> chunk{};
        while (device_ >= 0) {
            const ssize_t got = ::read(device_, chunk.data(), chunk.size());
            if (got < 0 && errno == EINTR) continue;
            // no data, or the device is gone: both mean no more bytes
            if (got <= 0) break;
            data.insert(data.end(), chunk.begin(), chunk.begin() + got);
        }
        return data;
    }

    void write(const bytes& data) override {
        rest_.insert(rest_.end(), data.begin(), data.end());
        send_rest();
    }

    bool vanished() override {
        int waiting = 0;
        return device_ >= 0 && ::ioctl(device_, FIONREAD, &waiting) != 0;
    }

private:
    void configure(const std::filesystem::path& device) const {
        ::ioctl(device_, TIOCEXCL);
        termios line = found_;
        ::cfmakeraw(&line);
        line.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB | CRTSCTS);
        line.c_cflag |= CS8 | CLOCAL | CREAD;
        line.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
        line.c_cc[VMIN] = 0;
        line.c_cc[VTIME] = 0;
        if (::cfsetspeed(&line, B19200) != 0 || ::tcsetattr(device_, TCSANOW, &line) != 0)
            cannot_be("set to 19200,N,8,1", device);
        // a pseudo terminal has no modem lines
        int lines = TIOCM_DTR | TIOCM_RTS;
        ::ioctl(device_, TIOCMBIS, &lines);
        // discard what arrived while the port was closed
        ::tcflush(device_, TCIOFLUSH);
    }

    /// Writes as much as the system accepts. A vanished device accepts everything and drops it.
    void send_rest() {
        while (!rest_.empty()) {
            const ssize_t sent = device_ < 0 ? -1 : ::write(device_, rest_.data(), rest_.size());
            if (sent < 0 && device_ >= 0 && errno == EINTR) continue;
            if (sent < 0 && device_ >= 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
            if (sent < 0) {
                rest_.clear();
                return;
            }
            rest_.erase(rest_.begin(), rest_.begin() + sent);
        }
    }

    void close_device() {
        rest_.clear();
        if (device_ < 0) return;
        ::tcflush(device_, TCIOFLUSH);
        // both fail on a vanished device
        ::tcsetattr(device_, TCSANOW, &found_);
        ::ioctl(device_, TIOCNXCL);
        ::close(device_);
        device_ = -1;
    }

    device_finder device_of_;
    int device_ = -1;
    termios found_{}; // the device's previous settings
    bytes rest_;      // not yet accepted by the system
};

} // namespace

std::filesystem::path device_of_port(const std::filesystem::path& program_directory, int number) {
    if (number < 1) fail("there is no port " + std::to_string(number));
    std::filesystem::path link = program_directory / ("com" + std::to_string(number));
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(link, error))) return link;
    return "/dev/ttyS" + std::to_string(number - 1);
}

std::unique_ptr<serial_port> make_native_serial_port(const std::filesystem::path& program_directory) {
    return std::make_unique<posix_serial_port>(
        [program_directory](int number) { return device_of_port(program_directory, number); });
}

std::unique_ptr<serial_port> make_serial_port_of(const std::filesystem::path& device) {
    return std::make_unique<posix_serial_port>([device](int) { return device; });
}

} // namespace desk
