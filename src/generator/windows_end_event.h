#pragma once

#include "runtime/windows_api.h"

namespace desk {

/// The system's request to end a console program: Ctrl+C, the closed console window, the end of the session. One per
/// program. After the request the program has a few seconds, until this is destroyed.
class end_event {
public:
    end_event();
    ~end_event();
    end_event(const end_event&) = delete;
    end_event& operator=(const end_event&) = delete;

    /// Set once a request has arrived.
    HANDLE event() const;
};

} // namespace desk
