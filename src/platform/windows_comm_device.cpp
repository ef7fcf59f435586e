#include "platform/windows_overlapped_device.h"
#include "platform/windows_port_device.h"

#include "runtime/failure.h"

#include <algorithm>
#include <utility>

namespace desk {

namespace {

[[noreturn]] void fail(const std::string& why) { throw runtime_failure(failure::path_file_access_error, why); }

[[noreturn]] void cannot(const std::string& what, const std::string& name) {
    const DWORD error = GetLastError(); // before another call changes it
    fail(name + " can't be " + what + ": Windows error " + std::to_string(error));
}

HANDLE opened(const std::string& name) {
    const HANDLE device = CreateFileA(("\\\\.\\" + name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (device != INVALID_HANDLE_VALUE) return device;
    const DWORD error = GetLastError();
    // Windows gives a port to one program at a time and denies access to others
    if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION)
        fail(name + " is in use by another program: close the port there");
    if (error == ERROR_FILE_NOT_FOUND) fail(name + " is not there: plug the adapter in, or choose another port");
    SetLastError(error);
    cannot("opened", name);
}

class comm_device final : public port_device {
public:
    explicit comm_device(const std::string& name) : device_(opened(name)) { configure(name); }
    ~comm_device() override { purge(PURGE_RXABORT | PURGE_RXCLEAR | PURGE_TXABORT | PURGE_TXCLEAR); }
    comm_device(const comm_device&) = delete;
    comm_device& operator=(const comm_device&) = delete;

    std::size_t in_count() override {
        const COMSTAT now = status();
        return device_.received().size() + now.cbInQue;
    }

    std::size_t out_count() override {
        const std::size_t waiting = device_.waiting();
        const COMSTAT now = status();
        // most drivers count the bytes of a write that is not finished; all of them have at least one left
        const std::size_t least = device_.in_flight() == 0 ? 0 : 1;
        return device_.is_gone() ? 0 : waiting + std::max<std::size_t>(now.cbOutQue, least);
    }

    void discard_input() override {
        purge(PURGE_RXABORT | PURGE_RXCLEAR);
        device_.discard_received();
    }

    void discard_output() override {
        purge(PURGE_TXABORT | PURGE_TXCLEAR);
        device_.drop_unsent();
    }

    bytes read() override {
        device_.fetch(status().cbInQue);
        return std::exchange(device_.received(), {});
    }

    void write(const bytes& data) override { device_.write(data); }

    bool vanished() override {
        status();
        return device_.is_gone();
    }

private:
    /// All zero if the device is gone.
    COMSTAT status() {
        COMSTAT state{};
        DWORD errors = 0;
        if (!device_.is_gone() && ClearCommError(device_.handle(), &errors, &state)) return state;
        device_.lose();
        return {};
    }

    void purge(DWORD what) {
        if (!device_.is_gone()) PurgeComm(device_.handle(), what);
    }

    void configure(const std::string& name) {
        DCB line{};
        line.DCBlength = sizeof line;
        if (!GetCommState(device_.handle(), &line)) cannot("used as a serial port", name);
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
        // a read takes what is there; a write takes as long as the device needs
        COMMTIMEOUTS limits{};
        limits.ReadIntervalTimeout = MAXDWORD;
        if (!SetCommState(device_.handle(), &line) || !SetCommTimeouts(device_.handle(), &limits))
            cannot("set to 19200,N,8,1", name);
        purge(PURGE_RXCLEAR | PURGE_TXCLEAR);
    }

    overlapped_device device_;
};

} // namespace

std::unique_ptr<port_device> open_comm_device(const std::string& name) { return std::make_unique<comm_device>(name); }

} // namespace desk
