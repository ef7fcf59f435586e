#include "generator/windows_served_pipe.h"

#include "generator/windows_user_alone.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <utility>

namespace desk {

namespace {

constexpr DWORD buffer_size = 4096;
constexpr std::size_t most_at_once = 1024;

HANDLE new_event() { return CreateEventW(nullptr, TRUE, FALSE, nullptr); }

} // namespace

served_pipe::served_pipe(const std::string& name, unsigned most, place which) {
    user_alone rights;
    const DWORD first = which == place::first ? FILE_FLAG_FIRST_PIPE_INSTANCE : 0;
    pipe_ = CreateNamedPipeW(path_from_utf8(name).c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | first,
                             PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, most,
                             buffer_size, buffer_size, 0, rights.attributes());
    if (pipe_ == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        const bool in_use = error == ERROR_ACCESS_DENIED || error == ERROR_PIPE_BUSY;
        throw runtime_failure(failure::path_file_access_error,
                              "the pipe " + name + " can't be made: " +
                                  (in_use ? "another program serves it" : "Windows error " + std::to_string(error)));
    }
    input_.hEvent = new_event();
    output_.hEvent = new_event();
    listen();
}

served_pipe::~served_pipe() {
    stop();
    CloseHandle(pipe_);
    CloseHandle(input_.hEvent);
    CloseHandle(output_.hEvent);
}

void served_pipe::listen() {
    waits_for_input_ = true;
    while (!ConnectNamedPipe(pipe_, &input_)) {
        switch (GetLastError()) {
        case ERROR_IO_PENDING:
            return;
        case ERROR_NO_DATA:
            // a client has come and left already
            DisconnectNamedPipe(pipe_);
            break;
        default:
            // a client is there
            waits_for_input_ = false;
            SetEvent(input_.hEvent);
            return;
        }
    }
}

void served_pipe::start_reading() {
    in_.resize(most_at_once);
    waits_for_input_ = ReadFile(pipe_, in_.data(), static_cast<DWORD>(in_.size()), nullptr, &input_) ||
                       GetLastError() == ERROR_IO_PENDING;
    client_has_left_ = !waits_for_input_;
}

bytes served_pipe::take() {
    bytes data;
    if (waits_for_input_) {
        DWORD count = 0;
        if (!GetOverlappedResult(pipe_, &input_, &count, FALSE)) {
            if (GetLastError() == ERROR_IO_INCOMPLETE) return data;
            client_has_left_ = true;
        } else if (has_client_) {
            data.assign(in_.begin(), in_.begin() + static_cast<std::ptrdiff_t>(count));
        }
        waits_for_input_ = false;
    }
    has_client_ = true;
    if (client_has_left_)
        ResetEvent(input_.hEvent);
    else
        start_reading();
    return data;
}

void served_pipe::write(const bytes& data) {
    if (!has_client_ || client_has_left_ || data.empty()) return;
    out_ = data;
    is_writing_ = WriteFile(pipe_, out_.data(), static_cast<DWORD>(out_.size()), nullptr, &output_) ||
                  GetLastError() == ERROR_IO_PENDING;
}

bool served_pipe::is_writing() {
    DWORD count = 0;
    if (is_writing_ && (GetOverlappedResult(pipe_, &output_, &count, FALSE) || GetLastError() != ERROR_IO_INCOMPLETE))
        is_writing_ = false;
    return is_writing_;
}

/// The system no longer uses this object's memory.
void served_pipe::stop() {
    CancelIo(pipe_);
    DWORD count = 0;
    if (std::exchange(waits_for_input_, false)) GetOverlappedResult(pipe_, &input_, &count, TRUE);
    if (std::exchange(is_writing_, false)) GetOverlappedResult(pipe_, &output_, &count, TRUE);
}

void served_pipe::disconnect() {
    stop();
    DisconnectNamedPipe(pipe_);
}

void served_pipe::serve_next() {
    disconnect();
    has_client_ = false;
    client_has_left_ = false;
    listen();
}

} // namespace desk
