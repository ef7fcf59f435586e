#include "generator/control_client.h"

#include "generator/windows_control_pipe.h"
#include "generator/windows_typed_input.h"
#include "platform/command_line.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <array>
#include <string_view>

namespace desk {

namespace {

constexpr DWORD patience_ms = 10'000;

[[noreturn]] void fail(const std::string& why) { throw runtime_failure(failure::path_file_access_error, why); }

class connection {
public:
    explicit connection(const std::filesystem::path& path) {
        do
            pipe_ = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr);
        while (pipe_ == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PIPE_BUSY &&
               WaitNamedPipeW(path.c_str(), patience_ms));
        if (pipe_ == INVALID_HANDLE_VALUE)
            fail("no simulator listens at " + utf8_from_path(path) + ": Windows error " +
                 std::to_string(GetLastError()));
        input_.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        output_.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        start_reading();
    }
    ~connection() {
        CancelIo(pipe_);
        DWORD count = 0;
        if (!ended_) GetOverlappedResult(pipe_, &input_, &count, TRUE);
        CloseHandle(pipe_);
    }
    connection(const connection&) = delete;
    connection& operator=(const connection&) = delete;

    /// Set when `print` has something to do.
    HANDLE event() const { return input_.hEvent; }

    /// Returns false if the simulator has ended.
    bool send(std::string_view text) {
        DWORD count = 0;
        return (WriteFile(pipe_, text.data(), static_cast<DWORD>(text.size()), nullptr, &output_) ||
                GetLastError() == ERROR_IO_PENDING) &&
               GetOverlappedResult(pipe_, &output_, &count, TRUE);
    }

    /// Prints what has arrived. Returns false once nothing more will.
    bool print() {
        DWORD count = 0;
        if (!ended_ && !GetOverlappedResult(pipe_, &input_, &count, FALSE)) {
            if (GetLastError() == ERROR_IO_INCOMPLETE) return true;
            ended_ = true;
        }
        if (ended_) return false;
        write_to_standard_output({chunk_.data(), count});
        start_reading();
        return !ended_;
    }

private:
    void start_reading() {
        ended_ = !ReadFile(pipe_, chunk_.data(), static_cast<DWORD>(chunk_.size()), nullptr, &input_) &&
                 GetLastError() != ERROR_IO_PENDING;
    }

    HANDLE pipe_ = INVALID_HANDLE_VALUE;
    OVERLAPPED input_{};
    OVERLAPPED output_{};
    std::array<char, 4096> chunk_{};
    bool ended_ = false;
};

int send_one(connection& simulator, const std::string& line) {
    simulator.send(line + "\n" + end_of_lines);
    while (simulator.print()) {
        if (WaitForSingleObject(simulator.event(), patience_ms) == WAIT_TIMEOUT) fail("the simulator does not answer");
    }
    return 0;
}

int converse(connection& simulator) {
    DWORD mode = 0;
    if (GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode))
        write_to_standard_error("Commands go to the simulator; \"help\" lists them, Ctrl+Z and Enter end.\n");
    typed_input input;
    bool typing = true;
    while (simulator.print()) {
        const std::array<HANDLE, 2> events{simulator.event(), input.event()};
        WaitForMultipleObjects(typing ? 2 : 1, events.data(), FALSE, INFINITE);
        if (!typing) continue;
        typed_input::typed now = input.take();
        typing = !now.all;
        if (now.all) now.text += end_of_lines;
        if (!now.text.empty() && !simulator.send(now.text)) break;
    }
    if (typing) write_to_standard_error("The simulator has ended.\n");
    return 0;
}

} // namespace

int send_to_simulator(const std::filesystem::path& path, const std::string& line) {
    connection simulator(path);
    return line.empty() ? converse(simulator) : send_one(simulator, line);
}

} // namespace desk
