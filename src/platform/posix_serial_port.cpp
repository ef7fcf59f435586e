#include "platform/native_serial_port.h"

#include "runtime/failure.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace desk {

namespace {

[[noreturn]] void cannot(const std::string& what, const std::filesystem::path& device) {
    throw runtime_failure(failure::path_file_access_error,
                          device.string() + " can't be " + what + ": " + std::strerror(errno));
}

class posix_serial_port final : public serial_port {
public:
    explicit posix_serial_port(std::filesystem::path directory) : directory_(std::move(directory)) {}
    ~posix_serial_port() override { close_device(); }
    posix_serial_port(const posix_serial_port&) = delete;
    posix_serial_port& operator=(const posix_serial_port&) = delete;

    void open(int number) override {
        close_device();
        if (number < 1)
            throw runtime_failure(failure::path_file_access_error, "there is no port " + std::to_string(number));
        const std::filesystem::path device = device_of(number);
        device_ = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (device_ < 0) cannot("opened", device);
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
            // nothing waits, or the device is gone: both mean no more bytes
            if (got <= 0) break;
            data.insert(data.end(), chunk.begin(), chunk.begin() + got);
        }
        return data;
    }

    void write(const bytes& data) override {
        rest_.insert(rest_.end(), data.begin(), data.end());
        send_rest();
    }

private:
    std::filesystem::path device_of(int number) const {
        std::filesystem::path link = directory_ / ("com" + std::to_string(number));
        std::error_code error;
        if (std::filesystem::exists(std::filesystem::symlink_status(link, error))) return link;
        return "/dev/ttyS" + std::to_string(number - 1);
    }

    void configure(const std::filesystem::path& device) const {
        termios line{};
        if (::tcgetattr(device_, &line) != 0) cannot("used as a serial port", device);
        ::ioctl(device_, TIOCEXCL);
        ::cfmakeraw(&line);
        line.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB | CRTSCTS);
        line.c_cflag |= CS8 | CLOCAL | CREAD;
        line.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
        line.c_cc[VMIN] = 0;
        line.c_cc[VTIME] = 0;
        if (::cfsetspeed(&line, B19200) != 0 || ::tcsetattr(device_, TCSANOW, &line) != 0)
            cannot("set to 19200,N,8,1", device);
        // a pseudo terminal has no modem lines
        int lines = TIOCM_DTR | TIOCM_RTS;
        ::ioctl(device_, TIOCMBIS, &lines);
        // what was sent while the port was closed is still there
        ::tcflush(device_, TCIOFLUSH);
    }

    /// Hands the system as much as it takes. A device that is gone takes everything, to nowhere.
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
        ::ioctl(device_, TIOCNXCL);
        ::close(device_);
        device_ = -1;
    }

    std::filesystem::path directory_;
    int device_ = -1;
    bytes rest_; // written and not yet taken by the system
};

} // namespace

std::unique_ptr<serial_port> make_native_serial_port(const std::filesystem::path& program_directory) {
    return std::make_unique<posix_serial_port>(program_directory);
}

} // namespace desk
