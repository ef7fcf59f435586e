#pragma once

namespace desk {

/// The system's request to end the program: SIGTERM, SIGINT or SIGHUP on POSIX systems, unless ignored at program
/// start. While this exists, none of them ends the program, and neither does a closed standard error. On Windows this
/// reports Ctrl+C in a console; other requests arrive through the windows. One per program.
class end_request {
public:
    end_request();
    ~end_request();
    end_request(const end_request&) = delete;
    end_request& operator=(const end_request&) = delete;

    /// True once a request has arrived. Also lets the windows of the calling thread receive theirs.
    bool received() const;

    /// A file descriptor that becomes readable with the first request, or -1.
    int descriptor() const;
};

} // namespace desk
