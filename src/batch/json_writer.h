#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace desk::batch {

/// Appends JSON to a text, without white space and in ASCII alone: other characters are escaped.
class json_writer {
public:
    explicit json_writer(std::string& text) : text_(text) {}

    void begin_object() { begin('{'); }
    void end_object() { end('}'); }
    void begin_array() { begin('['); }
    void end_array() { end(']'); }
    /// `name` is printable ASCII without quotes. A value follows.
    void key(std::string_view name);

    void null() { put("null"); }
    void boolean(bool value) { put(value ? std::string_view("true") : std::string_view("false")); }
    void number(std::int64_t value);
    /// Rounded to at most six decimals; null if it is not finite.
    void number(double value);
    /// UTF-8; other bytes are those of the desk's character set.
    void text(std::string_view value);

    void member(std::string_view name, bool value);
    void member(std::string_view name, std::int64_t value);
    void member(std::string_view name, double value);
    /// Null for an empty text.
    void member(std::string_view name, std::string_view value);
    void member(std::string_view name, const char* value) = delete;
    /// Null without a value.
    template <class Value>
    void member(std::string_view name, const std::optional<Value>& value) {
        key(name);
        if (!value)
            null();
        else if constexpr (std::is_floating_point_v<Value>)
            number(*value);
        else
            number(static_cast<std::int64_t>(*value));
    }
    /// Null for 0.
    void member_or_null(std::string_view name, std::int64_t value);

private:
    void separate();
    void begin(char bracket);
    void end(char bracket);
    void put(std::string_view value);

    std::string& text_;
    bool needs_comma_ = false;
};

} // namespace desk::batch
