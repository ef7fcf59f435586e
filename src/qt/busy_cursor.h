#pragma once

namespace desk::qt {

/// The mouse cursor while the desk waits for the generator: busy from the first wait within an event until that event
/// ends. The windows stay usable, so the cursor stays an arrow.
class busy_cursor {
public:
    busy_cursor() = default;
    busy_cursor(const busy_cursor&) = delete;
    busy_cursor& operator=(const busy_cursor&) = delete;
    ~busy_cursor() { show(false); }

    /// The current event waits for the generator.
    void wait();
    void event_begins() { ++depth_; }
    void event_ends();

    /// Restores the normal cursor while a box or a window waits for the operator.
    class normal {
    public:
        explicit normal(busy_cursor& cursor);
        normal(const normal&) = delete;
        normal& operator=(const normal&) = delete;
        ~normal();

    private:
        busy_cursor& cursor_;
        int busy_before_;
    };

private:
    void show(bool busy);

    int depth_ = 0; // nesting depth of events
    int busy_ = 0;  // depth of the outermost event that waits; 0: none
    bool shown_ = false;
};

} // namespace desk::qt
