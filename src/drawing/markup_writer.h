#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace desk::drawing {

/// Appends text as data: the same characters are escaped in an element, an attribute and SVG. Control characters become
/// visible pictures; what XML or HTML forbids, and what changes the direction of the text around it, becomes U+FFFD.
/// Text that is not UTF-8 is read as bytes of the character set.
void append_escaped(std::string& out, std::string_view text);

/// Appends a number with at most `decimals` decimals (0 to 6), without zeros at its end. NaN and infinity become 0.
void append_number(std::string& out, double value, int decimals);
std::string number_text(double value, int decimals);
/// The same with all the decimals, for columns of numbers.
void append_fixed(std::string& out, double value, int decimals);
std::string fixed_text(double value, int decimals);

/// Writes elements that are well-formed both as HTML and as XML. Names are static and trusted, every text is escaped.
class markup_writer {
public:
    explicit markup_writer(std::string& out) : out_(out) {}

    markup_writer& begin(std::string_view element);
    markup_writer& begin(std::string_view element, std::string_view class_name);
    /// An attribute of the element that has just begun.
    markup_writer& attribute(std::string_view name, std::string_view value);
    markup_writer& attribute(std::string_view name, const char* value) {
        return attribute(name, std::string_view(value));
    }
    /// A coordinate: one decimal.
    markup_writer& attribute(std::string_view name, double value);
    markup_writer& attribute(std::string_view name, std::int64_t value);
    markup_writer& attribute(std::string_view name, int value) { return attribute(name, std::int64_t{value}); }
    markup_writer& attribute(std::string_view name, std::uint32_t value) {
        return attribute(name, std::int64_t{value});
    }
    markup_writer& text(std::string_view text);
    /// A number with all the decimals.
    markup_writer& fixed(double value, int decimals);
    void end();
    /// Ends an element that can have no content: in HTML `br`, `meta` and the like, and any in SVG.
    void end_void();
    /// A whole element with text.
    void element(std::string_view name, std::string_view text);
    void element(std::string_view name, std::string_view class_name, std::string_view text);
    /// Appends markup that is static or comes from another writer.
    void markup(std::string_view trusted);

private:
    void close_start_tag();

    std::string& out_;
    std::vector<std::string_view> open_;
    bool in_start_tag_ = false;
};

} // namespace desk::drawing
