#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace desk {

class control;
void mark_changed(control& owner);

/// A property of a control. Assigning another value marks the control as changed, for its face to follow.
template <class Value>
class property {
public:
    property(control& owner, Value value) : owner_(owner), value_(std::move(value)) {}
    property(const property&) = delete;
    property(property&&) = delete;
    ~property() = default;

    property& operator=(Value value) {
        if (value_ == value) return *this;
        // the old value gives its memory back
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
    /// Appends in place: a text that grows byte by byte is not copied each time.
    property& operator+=(std::string_view more) requires std::is_same_v<Value, std::string> {
        if (more.empty()) return *this;
        value_ += more;
        mark_changed(owner_);
        return *this;
    }

    operator const Value&() const { return value_; } // NOLINT(google-explicit-constructor): it stands for its value
    const Value& get() const { return value_; }
    /// Counts the assignments of another value: since the same count, a text has only grown at its end.
    int replacements() const { return replacements_; }

    friend bool operator==(const property& a, const Value& b) { return a.value_ == b; }

private:
    control& owner_;
    Value value_;
    int replacements_ = 0;
};

} // namespace desk
