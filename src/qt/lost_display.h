#pragma once

#include <functional>

namespace desk::qt {

/// The toolkit ends the program at once when the display server goes away, and Windows when the session ends: no event
/// runs any more, and nothing on the stack is cleaned up. `save` is called before that, from inside the toolkit; it
/// must not touch a widget. One per program.
class lost_display {
public:
    explicit lost_display(std::function<void()> save);
    ~lost_display();
    lost_display(const lost_display&) = delete;
    lost_display& operator=(const lost_display&) = delete;

    /// True once the display server is known to be gone. Any thread may ask.
    static bool gone();
};

} // namespace desk::qt
