#include "batch/json_writer.h"

#include "runtime/windows_1252.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace desk::batch {

namespace {

/// The characters that need no escape, by code.
constexpr std::array<bool, 256> plain_characters = [] {
    std::array<bool, 256> plain{};
    for (std::size_t c = 0x20; c < 0x7F; ++c)
        plain[c] = c != '"' && c != '\\';
    return plain;
}();

bool is_plain(char c) { return plain_characters[static_cast<unsigned char>(c)]; }

bool is_ascii(std::string_view text) {
    // without a branch, so that the compiler takes many characters at once
    unsigned all = 0;
    for (const char c : text)
        all |= static_cast<unsigned char>(c);
    return all < 0x80;
}

/// Whether eight characters of ASCII need no escape, in a few operations on all of them.
bool eight_are_plain(const char* characters) {
    constexpr std::uint64_t each = 0x0101010101010101;
    constexpr std::uint64_t high_bits = each << 7;
    std::uint64_t eight = 0;
    std::memcpy(&eight, characters, sizeof eight);
    const auto has = [&](unsigned char c) {
        const std::uint64_t zero_where_equal = eight ^ each * c;
        return (zero_where_equal - each) & ~zero_where_equal;
    };
    const std::uint64_t borrow_of_controls = eight - each * ' ';
    return ((borrow_of_controls | has('"') | has('\\') | has(0x7F)) & high_bits) == 0;
}

void append_unit(std::string& text, std::uint32_t unit) {
    constexpr std::string_view digits = "0123456789abcdef";
    text += "\\u";
    for (const unsigned shift : {12U, 8U, 4U, 0U})
        text.push_back(digits[unit >> shift & 15]);
}

void append_escaped(std::string& text, char32_t c) {
    constexpr char32_t first_pair = 0x10000;
    switch (c) {
    case '"':
    case '\\':
        text.push_back('\\');
        text.push_back(static_cast<char>(c));
        return;
    case '\n':
        text += "\\n";
        return;
    case '\r':
        text += "\\r";
        return;
    case '\t':
        text += "\\t";
        return;
    default:
        if (c < first_pair) return append_unit(text, c);
        append_unit(text, 0xD800 + ((c - first_pair) >> 10));
        append_unit(text, 0xDC00 + ((c - first_pair) & 0x3FF));
    }
}

void append_ascii(std::string& text, std::string_view value) {
    while (!value.empty()) {
        std::size_t plain = 0;
        while (plain + 8 <= value.size() && eight_are_plain(value.data() + plain))
            plain += 8;
        while (plain < value.size() && is_plain(value[plain]))
            ++plain;
        text += value.substr(0, plain);
        value.remove_prefix(plain);
        if (value.empty()) return;
        append_escaped(text, static_cast<char32_t>(value.front()));
        value.remove_prefix(1);
    }
}

void append_characters(std::string& text, std::string_view value) {
    for (const char32_t c : characters_of(value)) {
        if (c < 0x7F && is_plain(static_cast<char>(c)))
            text.push_back(static_cast<char>(c));
        else
            append_escaped(text, c);
    }
}

} // namespace

void json_writer::separate() {
    if (needs_comma_) text_.push_back(',');
    needs_comma_ = true;
}

void json_writer::begin(char bracket) {
    separate();
    text_.push_back(bracket);
    needs_comma_ = false;
}

void json_writer::end(char bracket) {
    text_.push_back(bracket);
    needs_comma_ = true;
}

void json_writer::put(std::string_view value) {
    separate();
    text_ += value;
}

void json_writer::key(std::string_view name) {
    separate();
    text_.push_back('"');
    text_ += name;
    text_ += "\":";
    needs_comma_ = false;
}

void json_writer::number(std::int64_t value) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    put({digits.data(), end});
}

void json_writer::number(double value) {
    constexpr double largest = 1e12;
    constexpr std::int64_t parts = 1000000;
    if (!(std::fabs(value) < largest)) return null();
    std::int64_t rounded = std::llround(value * static_cast<double>(parts));
    if (rounded < 0) {
        put("-");
        rounded = -rounded;
    } else {
        separate();
    }
    std::array<char, 24> digits{};
    text_.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), rounded / parts).ptr);
    if (rounded % parts == 0) return;
    // a leading 1 keeps the zeros after the point
    char* end = std::to_chars(digits.data(), digits.data() + digits.size(), parts + rounded % parts).ptr;
    digits[0] = '.';
    while (end[-1] == '0')
        --end;
    text_.append(digits.data(), end);
}

void json_writer::text(std::string_view value) {
    separate();
    text_.push_back('"');
    if (is_ascii(value))
        append_ascii(text_, value);
    else
        append_characters(text_, value);
    text_.push_back('"');
}

void json_writer::member(std::string_view name, bool value) {
    key(name);
    boolean(value);
}

void json_writer::member(std::string_view name, std::int64_t value) {
    key(name);
    number(value);
}

void json_writer::member(std::string_view name, double value) {
    key(name);
    number(value);
}

void json_writer::member(std::string_view name, std::string_view value) {
    key(name);
    if (value.empty())
        null();
    else
        text(value);
}

void json_writer::member_or_null(std::string_view name, std::int64_t value) {
    key(name);
    if (value == 0)
        null();
    else
        number(value);
}

} // namespace desk::batch
