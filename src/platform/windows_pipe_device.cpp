#include "platform/windows_overlapped_device.h"
#include "platform/windows_port_device.h"

#include "runtime/failure.h"
#include "runtime/files.h"

#include <utility>

namespace desk {

namespace {

/// The program at the other end needs a moment to serve the pipe again after the last desk.
constexpr DWORD patience_ms = 500;

HANDLE connected(const std::wstring& path) {
    // the program at the other end can't act in this user's name
    return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                       FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr);
}

HANDLE connected_pipe(const std::string& name) {
    const std::wstring path = path_from_utf8(name).wstring();
    HANDLE pipe = connected(path);
    if (pipe == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PIPE_BUSY && WaitNamedPipeW(path.c_str(), patience_ms))
        pipe = connected(path);
    if (pipe != INVALID_HANDLE_VALUE) return pipe;
    std::string why;
    switch (const DWORD error = GetLastError()) {
    case ERROR_PIPE_BUSY:
    case ERROR_SEM_TIMEOUT:
        why = " is in use by another program: close the port there";
        break;
    case ERROR_FILE_NOT_FOUND:
        why = " is not there: start the simulated generator, or name another device in the port's file";
        break;
    case ERROR_ACCESS_DENIED:
        why = " is served for another user";
        break;
    default:
        why = " can't be opened: Windows error " + std::to_string(error);
    }
    throw runtime_failure(failure::path_file_access_error, name + why);
}

class pipe_device final : public port_device {
public:
    explicit pipe_device(const std::string& name) : device_(connected_pipe(name)) {}

    std::size_t in_count() override {
        const std::size_t waiting = unread();
        return device_.received().size() + waiting;
    }

    // a write to a pipe that hung up fails, and is lost
    std::size_t out_count() override { return device_.waiting() + device_.in_flight(); }

    void discard_input() override {
        device_.fetch(unread());
        device_.discard_received();
    }
    void discard_output() override { device_.drop_unsent(); }

    bytes read() override {
        device_.fetch(unread());
        return std::exchange(device_.received(), {});
    }

    void write(const bytes& data) override { device_.write(data); }

    bool vanished() override {
        unread();
        return device_.is_gone();
    }

private:
    /// Bytes in the pipe; 0 if it is gone.
    std::size_t unread() {
        DWORD count = 0;
        if (!device_.is_gone() && PeekNamedPipe(device_.handle(), nullptr, 0, nullptr, &count, nullptr)) return count;
        device_.lose();
        return 0;
    }

    overlapped_device device_;
};

} // namespace

std::unique_ptr<port_device> open_pipe_device(const std::string& name) { return std::make_unique<pipe_device>(name); }

} // namespace desk
