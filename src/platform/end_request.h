#pragma once

namespace desk {

/// The system's request that the program end: on POSIX systems SIGTERM, SIGINT and SIGHUP, except those that were
/// ignored when the program started. None of them ends the program while this exists, and neither does a closed
/// standard error. On Windows the request comes through the windows, so this reports none. One per program.
class end_request {
public:
    end_request();
    ~end_request();
    end_request(const end_request&) = delete;
    end_request& operator=(const end_request&) = delete;

    /// True once a request has come.
    bool came() const;

    /// A file descriptor that becomes readable with the first request; -1 where there is none.
    int descriptor() const;
};

} // namespace desk
