#pragma once

#include "runtime/bytes.h"
#include "runtime/windows_api.h"

#include <string>
#include <vector>

namespace desk {

/// The serving end of a named pipe that only this user can open, on this computer. No call waits for the other end.
class served_pipe {
public:
    enum class place { first, further };
    /// One of up to `most` ends of the pipe; the first must be the only one. Throws
    /// failure::path_file_access_error if the name is in use or the system refuses.
    served_pipe(const std::string& name, unsigned most, place which);
    /// What the client has not read yet can still be read.
    ~served_pipe();
    served_pipe(const served_pipe&) = delete;
    served_pipe& operator=(const served_pipe&) = delete;

    /// Set when `take` has something to do: a client has come, written or left.
    HANDLE input_event() const { return input_.hEvent; }
    /// Set when a write has ended.
    HANDLE output_event() const { return output_.hEvent; }

    /// Some of the bytes that the client has written; empty if there are none.
    bytes take();
    /// As of the last `take`.
    bool has_client() const { return has_client_; }
    bool client_has_left() const { return client_has_left_; }

    /// Starts a write; only if none is under way.
    void write(const bytes& data);
    bool is_writing();

    /// Throws the client out and waits for the next one.
    void serve_next();
    /// Throws the client out.
    void disconnect();

private:
    void listen();
    void start_reading();
    void stop();

    HANDLE pipe_ = INVALID_HANDLE_VALUE;
    OVERLAPPED input_{};
    OVERLAPPED output_{};
    bytes in_;
    bytes out_;
    bool has_client_ = false;
    bool client_has_left_ = false;
    bool waits_for_input_ = false; // or for a client
    bool is_writing_ = false;
};

} // namespace desk
