#include "platform/native_serial_port.h"
#include "runtime/windows_api.h"

#include "runtime/failure.h"
#include "runtime/files.h"

#include <functional>
#include <string>
#include <utility>

namespace desk {

namespace {

[[noreturn]] void cannot(const std::string& what, const std::string& device) {
    const DWORD error = GetLastError(); // before another call changes it
    throw runtime_failure(failure::path_file_access_error,
                          device + " can't be " + what + ": Windows error " + std::to_string(error));
}

[[noreturn]] void cannot_open(const std::string& device) {
    const DWORD error = GetLastError();
    // Windows gives a port to one program at a time and denies access to others
    if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION)
        throw runtime_failure(failure::path_file_access_error,
                              device + " is in use by another program: close the port there");
    if (error == ERROR_FILE_NOT_FOUND) {
        throw runtime_failure(failure::path_file_access_error,
                              device + " is not there: plug the adapter in, or choose another port");
    }
    SetLastError(error);
    cannot("opened", device);
}

/// The device of a port's number.
using device_finder = std::function<std::filesystem::path(int)>;

class windows_serial_port final : public serial_port {
public:
    explicit windows_serial_port(device_finder device_of) : device_of_(std::move(device_of)) {}
    ~windows_serial_port() override { close_device(); }
    windows_serial_port(const windows_serial_port&) = delete;
    windows_serial_port& operator=(const windows_serial_port&) = delete;

    void open(int number) override {
        close_device();
        const std::string device = utf8_from_path(device_of_(number));
        device_ = CreateFileA(("\\\\.\\" + device).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                              nullptr);
        if (device_ == INVALID_HANDLE_VALUE) cannot_open(device);
        try {
            configure(device);
        } catch (const runtime_failure&) {
            close_device();
            throw;
        }
    }

    void close() override { close_device(); }

    std::size_t in_count() override { return status().cbInQue; }
    std::size_t out_count() override { return status().cbOutQue; }

    void discard_input() override {
        if (is_open()) PurgeComm(device_, PURGE_RXABORT | PURGE_RXCLEAR);
    }

    void discard_output() override {
        if (is_open()) PurgeComm(device_, PURGE_TXABORT | PURGE_TXCLEAR);
    }

    bytes read() override {
        bytes data(in_count());
        DWORD got = 0;
        if (data.empty() || !ReadFile(device_, data.data(), static_cast<DWORD>(data.size()), &got, nullptr)) got = 0;
        data.resize(got);
        return data;
    }

    void write(const bytes& data) override {
        DWORD sent = 0;
        if (is_open() && !data.empty())
            WriteFile(device_, data.data(), static_cast<DWORD>(data.size()), &sent, nullptr);
    }

    bool vanished() override {
        COMSTAT state{};
        DWORD errors = 0;
        return is_open() && !ClearCommError(device_, &errors, &state);
    }

private:
    bool is_open() const { return device_ != INVALID_HANDLE_VALUE; }

    /// All zero if no port is open or the device is gone.
    COMSTAT status() const {
        COMSTAT state{};
        DWORD errors = 0;
        if (!is_open() || !ClearCommError(device_, &errors, &state)) state = {};
        return state;
    }

    void configure(const std::string& device) const {
        DCB line{};
        line.DCBlength = sizeof line;
        if (!GetCommState(device_, &line)) cannot("used as a serial port", device);
        line.BaudRate = CBR_19200;
        line.ByteSize = 8;
        line.Parity = NOPARITY;
        line.StopBits = ONESTOPBIT;
        line.fBinary = TRUE;
        line.fParity = FALSE;
        line.fOutxCtsFlow = FALSE;
        line.fOutxDsrFlow = FALSE;
        line.fDsrSensitivity = FALSE;
        line.fOutX = FALSE;
        line.fInX = FALSE;
        line.fNull = FALSE;
        line.fAbortOnError = FALSE;
        line.fDtrControl = DTR_CONTROL_ENABLE;
        line.fRtsControl = RTS_CONTROL_ENABLE;
        // reads return what is there and never block; a blocked write gives up after two seconds
        COMMTIMEOUTS limits{};
        limits.ReadIntervalTimeout = MAXDWORD;
        limits.WriteTotalTimeoutConstant = 2000;
        if (!SetCommState(device_, &line) || !SetCommTimeouts(device_, &limits)) cannot("set to 19200,N,8,1", device);
        PurgeComm(device_, PURGE_RXCLEAR | PURGE_TXCLEAR);
    }

    void close_device() {
        if (!is_open()) return;
        PurgeComm(device_, PURGE_RXABORT | PURGE_RXCLEAR | PURGE_TXABORT | PURGE_TXCLEAR);
        CloseHandle(device_);
        device_ = INVALID_HANDLE_VALUE;
    }

    device_finder device_of_;
    HANDLE device_ = INVALID_HANDLE_VALUE;
};

} // namespace

std::filesystem::path device_of_port(const std::filesystem::path&, int number) {
    if (number < 1)
        throw runtime_failure(failure::path_file_access_error, "there is no port " + std::to_string(number));
    return "COM" + std::to_string(number);
}

std::unique_ptr<serial_port> make_native_serial_port(const std::filesystem::path& program_directory) {
    return std::make_unique<windows_serial_port>(
        [program_directory](int number) { return device_of_port(program_directory, number); });
}

std::unique_ptr<serial_port> make_serial_port_of(const std::filesystem::path& device) {
    return std::make_unique<windows_serial_port>([device](int) { return device; });
}

} // namespace desk
