#pragma once

#include "runtime/windows_api.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace desk::test {

/// Calls `happens` until it returns true; false: it has not within ten seconds.
template <class Condition>
bool wait_until(Condition&& happens) {
    for (int i = 0; i < 10'000; ++i) {
        if (happens()) return true;
        Sleep(1);
    }
    return false;
}

/// A named pipe for one client. The test holds the serving end.
class own_pipe {
public:
    static constexpr DWORD buffer = 4096;

    /// `holds`: how many bytes can be unread in each direction.
    explicit own_pipe(DWORD holds = buffer) : holds_(holds) {
        static int next = 0;
        name_ = "\\\\.\\pipe\\desk_test_" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(next++);
        serve();
    }
    ~own_pipe() { hang_up(); }
    own_pipe(const own_pipe&) = delete;
    own_pipe& operator=(const own_pipe&) = delete;

    const std::string& name() const { return name_; }

    /// Writes from the serving end, as much as the pipe holds.
    void type(const std::string& text) {
        DWORD sent = 0;
        if (!WriteFile(end_, text.data(), static_cast<DWORD>(text.size()), &sent, nullptr) || sent != text.size())
            throw std::runtime_error("cannot write to the pipe");
    }

    /// Waits until the client has written `count` bytes and returns them; fewer: timed out.
    std::string shown(std::size_t count) {
        std::string all;
        wait_until([&] {
            all += take(count - all.size());
            return all.size() == count;
        });
        return all;
    }

    /// Reads up to `most` of the bytes that the client has written.
    std::string take(std::size_t most) {
        DWORD waiting = 0;
        DWORD got = 0;
        if (!PeekNamedPipe(end_, nullptr, 0, nullptr, &waiting, nullptr)) return "";
        std::string text(std::min<std::size_t>(waiting, most), '\0');
        if (text.empty() || !ReadFile(end_, text.data(), static_cast<DWORD>(text.size()), &got, nullptr)) got = 0;
        text.resize(got);
        return text;
    }

    bool has_client() const { return PeekNamedPipe(end_, nullptr, 0, nullptr, nullptr, nullptr) != 0; }

    /// Closes the serving end.
    void hang_up() {
        if (end_ != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(end_, INVALID_HANDLE_VALUE));
    }
    /// Throws the client out.
    void disconnect() { DisconnectNamedPipe(end_); }
    /// Serves a new client under the same name.
    void serve() {
        hang_up();
        end_ = CreateNamedPipeA(name_.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_FIRST_PIPE_INSTANCE,
                                PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT, 1, holds_, holds_, 0, nullptr);
        if (end_ == INVALID_HANDLE_VALUE) throw std::runtime_error("no pipe is available");
    }

private:
    DWORD holds_;
    std::string name_;
    HANDLE end_ = INVALID_HANDLE_VALUE;
};

} // namespace desk::test
