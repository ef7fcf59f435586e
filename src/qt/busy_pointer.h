#pragma once

namespace desk::qt {

/// The mouse cursor while the desk waits for the generator: busy from the first wait within an event until that event
/// ends. The windows stay usable, so the cursor stays an arrow.
class busy_pointer {
public:
    busy_pointer() = default;
    busy_pointer(const busy_pointer&) = delete;
    busy_pointer& operator=(const busy_pointer&) = delete;
    ~busy_pointer() { show(false); }

    /// The current event waits for the generator.
    void wait();
    void event_begins() { ++depth_; }
    void event_ends();

    /// Restores the normal cursor while a box or a window waits for the operator.
    class usual {
    public:
        explicit usual(busy_pointer& pointer);
        usual(const usual&) = delete;
        usual& operator=(const usual&) = delete;
        ~usual();

    private:
        busy_pointer& pointer_;
        int busy_before_;
    };

private:
    void show(bool busy);

    int depth_ = 0; // nesting depth of events
    int busy_ = 0;  // depth of the outermost event that waits; 0: none
    bool shown_ = false;
};

} // namespace desk::qt
