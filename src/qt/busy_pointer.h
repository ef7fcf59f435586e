#pragma once

namespace desk::qt {

/// The mouse pointer while the generator is asked: busy from the first wait of an event of the desk to the end of that
/// event, however it ends. The windows stay usable meanwhile, and so the pointer stays an arrow.
class busy_pointer {
public:
    busy_pointer() = default;
    busy_pointer(const busy_pointer&) = delete;
    busy_pointer& operator=(const busy_pointer&) = delete;
    ~busy_pointer() { show(false); }

    /// The event that is being worked on waits for the generator.
    void wait();
    void event_begins() { ++depth_; }
    void event_ends();

    /// The usual pointer as long as this lives: a box or a window waits for the operator.
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

    int depth_ = 0; // of the events within each other
    int busy_ = 0;  // the depth of the outermost event that has waited; 0: none
    bool shown_ = false;
};

} // namespace desk::qt
