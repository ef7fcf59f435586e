#pragma once

#include <functional>

namespace desk::qt {

/// Calls `save` when the display server disappears, or when a Windows session ends: Qt then ends the program at once,
/// with no further events and no stack unwinding. `save` runs inside Qt and must not touch a widget. One per program.
class display_loss {
public:
    explicit display_loss(std::function<void()> save);
    ~display_loss();
    display_loss(const display_loss&) = delete;
    display_loss& operator=(const display_loss&) = delete;

    /// True once the display server is known to be gone. Thread-safe.
    static bool occurred();
};

} // namespace desk::qt
