#pragma once

#include <functional>

namespace desk::qt {

/// Calls `save` when the display server disappears, or when a Windows session ends: Qt then ends the program at once,
/// with no further events and no stack unwinding. `save` runs inside Qt and must not touch a widget. One per program.
class lost_display {
public:
    explicit lost_display(std::function<void()> save);
    ~lost_display();
    lost_display(const lost_display&) = delete;
    lost_display& operator=(const lost_display&) = delete;

    /// True once the display server is known to be gone. Thread-safe.
    static bool gone();
};

} // namespace desk::qt
