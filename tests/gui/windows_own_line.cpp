#include "own_line.h"

#include "platform/port_file.h"
#include "runtime/windows_api.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace desk::gui {

namespace {

/// In a mode without waiting: the threads that use it may end, and Windows cancels what an ending thread waits for.
class pipe_line final : public own_line {
public:
    explicit pipe_line(const std::filesystem::path& folder) {
        static int count = 0;
        const std::string name =
            R"(\\.\pipe\desk_test_line_)" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++count);
        constexpr DWORD buffer = 4096;
        pipe_ = CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_FIRST_PIPE_INSTANCE,
                                 PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_NOWAIT, 1, buffer, buffer, 0, nullptr);
        if (pipe_ == INVALID_HANDLE_VALUE) throw std::runtime_error("no pipe is available");
        std::ofstream(port_file(folder, 1)) << name;
    }
    ~pipe_line() override { CloseHandle(pipe_); }
    pipe_line(const pipe_line&) = delete;
    pipe_line& operator=(const pipe_line&) = delete;

    bytes read() override {
        bytes data(1024);
        DWORD got = 0;
        const bool has_read = ReadFile(pipe_, data.data(), static_cast<DWORD>(data.size()), &got, nullptr);
        if (!has_read && GetLastError() == ERROR_BROKEN_PIPE) {
            // the desk has closed its port and can open it again
            DisconnectNamedPipe(pipe_);
            ConnectNamedPipe(pipe_, nullptr);
        }
        data.resize(has_read ? got : 0);
        if (data.empty()) Sleep(1);
        return data;
    }

    void write(const bytes& data) override {
        DWORD sent = 0;
        WriteFile(pipe_, data.data(), static_cast<DWORD>(data.size()), &sent, nullptr);
    }

private:
    HANDLE pipe_;
};

} // namespace

std::unique_ptr<own_line> make_own_line(const std::filesystem::path& folder) {
    return std::make_unique<pipe_line>(folder);
}

std::shared_ptr<void> pace_of_own_lines() { return nullptr; }

} // namespace desk::gui
