#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace desk {

class control;
void mark_changed(control& owner);

/// A property of a control. Assigning a different value marks the control as changed, for its adapter to follow.
template <class Value>
class property {
public:
    property(control& owner, Value value) : owner_(owner), value_(std::move(value)) {}
    property(const property&) = delete;
    property(property&&) = delete;
    ~property() = default;

    property& operator=(Value value) {
        if (value_ == value) return *this;
        // frees the memory of the old value
        std::swap(value_, value);
        ++replacements_;
        mark_changed(owner_);
        return *this;
    }
    property& operator=(const property& other) {
        if (this != &other) *this = other.value_;
        return *this;
    }
    property& operator=(property&&) = delete;
    /// Appends in place, so that a text that grows byte by byte is not copied each time.
    property& operator+=(std::string_view more) requires std::is_same_v<Value, std::string> {
        if (more.empty()) return *this;
        value_ += more;
        mark_changed(owner_);
        return *this;
    }

    operator const Value&() const { return value_; } // NOLINT(google-explicit-constructor): used as its value
    const Value& get() const { return value_; }
    /// The number of assignments of a different value: while it stays the same, a text only grows at its end.
    int replacements() const { return replacements_; }

    friend bool operator==(const property& a, const Value& b) { return a.value_ == b; }

private:
    control& owner_;
    Value value_;
    int replacements_ = 0;
};

} // namespace desk
