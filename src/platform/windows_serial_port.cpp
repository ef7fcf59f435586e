#include "platform/native_serial_port.h"

#include "platform/port_file.h"
#include "platform/windows_port_device.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <functional>
#include <string>
#include <utility>

namespace desk {

namespace {

/// The device of a port's number.
using device_finder = std::function<std::filesystem::path(int)>;

class windows_serial_port final : public serial_port {
public:
    explicit windows_serial_port(device_finder device_of) : device_of_(std::move(device_of)) {}

    void open(int number) override {
        close();
        const std::string device = device_named_by(utf8_from_path(device_of_(number)));
        device_ = is_pipe(device) ? open_pipe_device(device) : open_comm_device(device);
    }

    void close() override { device_.reset(); }

    std::size_t in_count() override { return device_ ? device_->in_count() : 0; }
    std::size_t out_count() override { return device_ ? device_->out_count() : 0; }

    void discard_input() override {
        if (device_) device_->discard_input();
    }

    void discard_output() override {
        if (device_) device_->discard_output();
    }

    bytes read() override { return device_ ? device_->read() : bytes(); }

    void write(const bytes& data) override {
        if (device_) device_->write(data);
    }

    bool vanished() override { return device_ && device_->vanished(); }

private:
    device_finder device_of_;
    std::unique_ptr<port_device> device_;
};

} // namespace

std::filesystem::path device_of_port(const std::filesystem::path& program_directory, int number) {
    if (number < 1)
        throw runtime_failure(failure::path_file_access_error, "there is no port " + std::to_string(number));
    return path_from_utf8(
        device_of_port_file(port_file(program_directory, number)).value_or("COM" + std::to_string(number)));
}

std::unique_ptr<serial_port> make_native_serial_port(const std::filesystem::path& program_directory) {
    return std::make_unique<windows_serial_port>(
        [program_directory](int number) { return device_of_port(program_directory, number); });
}

std::unique_ptr<serial_port> make_serial_port_of(const std::filesystem::path& device) {
    return std::make_unique<windows_serial_port>([device](int) { return device; });
}

std::unique_ptr<serial_port> make_serial_port_of(const std::filesystem::path& program_directory, int number) {
    return std::make_unique<windows_serial_port>(
        [program_directory, number](int) { return device_of_port(program_directory, number); });
}

} // namespace desk
