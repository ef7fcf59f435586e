#include "drawing/markup_writer.h"

#include "runtime/windows_1252.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace desk::drawing {

namespace {

enum class kind : std::uint8_t { plain, escaped, other };

constexpr std::array<kind, 256> kinds_of_bytes() {
    std::array<kind, 256> kinds{};
    for (std::size_t byte = 0; byte < kinds.size(); ++byte) {
        const bool spacing = byte == '\t' || byte == '\n' || byte == '\r';
        if ((byte < 0x20 && !spacing) || byte >= 0x7F) kinds[byte] = kind::other;
    }
    for (const char c : {'&', '<', '>', '"', '\''})
        kinds[static_cast<unsigned char>(c)] = kind::escaped;
    return kinds;
}

constexpr std::array<kind, 256> kinds = kinds_of_bytes();

kind kind_of(char c) { return kinds[static_cast<unsigned char>(c)]; }

std::string_view reference_of(char c) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    default:
        return "&#39;";
    }
}

bool changes_direction(char32_t c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

bool is_noncharacter(char32_t c) { return (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF); }

char32_t shown_character(char32_t c) {
    constexpr char32_t pictures_of_controls = 0x2400;
    constexpr char32_t picture_of_delete = 0x2421;
    constexpr char32_t replacement = 0xFFFD;
    if (c == 0x7F) return picture_of_delete;
    if (c < 0x20) return pictures_of_controls + c;
    if (c < 0xA0 || changes_direction(c) || is_noncharacter(c)) return replacement;
    return c;
}

void append_any(std::string& out, std::string_view text) {
    for (const char32_t c : characters_of(text)) {
        const char as_char = static_cast<char>(c);
        if (c >= 0x7F || kind_of(as_char) == kind::other)
            append_utf8(out, shown_character(c));
        else if (kind_of(as_char) == kind::escaped)
            out += reference_of(as_char);
        else
            out += as_char;
    }
}

} // namespace

void append_escaped(std::string& out, std::string_view text) {
    const bool only_ascii = std::none_of(text.begin(), text.end(), [](char c) { return kind_of(c) == kind::other; });
    if (!only_ascii) return append_any(out, text);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kind_of(text[i]) == kind::plain) continue;
        out.append(text, begin, i - begin);
        out += reference_of(text[i]);
        begin = i + 1;
    }
    out.append(text, begin);
}

void append_fixed(std::string& out, double value, int decimals) {
    constexpr std::array<std::int64_t, 7> powers = {1, 10, 100, 1000, 10'000, 100'000, 1'000'000};
    constexpr double largest = 1e12;
    const std::int64_t power = powers.at(static_cast<std::size_t>(decimals));
    if (!std::isfinite(value)) value = 0;
    const std::int64_t scaled = std::llround(std::clamp(value, -largest, largest) * static_cast<double>(power));
    const std::int64_t magnitude = scaled < 0 ? -scaled : scaled;
    if (scaled < 0) out += '-';
    std::array<char, 24> digits{};
    const auto whole = std::to_chars(digits.data(), digits.data() + digits.size(), magnitude / power);
    out.append(digits.data(), whole.ptr);
    if (decimals == 0) return;
    out += '.';
    for (std::int64_t place = power / 10; place != 0; place /= 10)
        out += static_cast<char>('0' + magnitude / place % 10);
}

void append_number(std::string& out, double value, int decimals) {
    append_fixed(out, value, decimals);
    if (decimals == 0) return;
    out.erase(out.find_last_not_of('0') + 1);
    if (out.back() == '.') out.pop_back();
}

std::string number_text(double value, int decimals) {
    std::string text;
    append_number(text, value, decimals);
    return text;
}

std::string fixed_text(double value, int decimals) {
    std::string text;
    append_fixed(text, value, decimals);
    return text;
}

markup_writer& markup_writer::begin(std::string_view element) {
    close_start_tag();
    out_ += '<';
    out_ += element;
    open_.push_back(element);
    in_start_tag_ = true;
    return *this;
}

markup_writer& markup_writer::begin(std::string_view element, std::string_view class_name) {
    return begin(element).attribute("class", class_name);
}

markup_writer& markup_writer::attribute(std::string_view name, std::string_view value) {
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    append_escaped(out_, value);
    out_ += '"';
    return *this;
}

markup_writer& markup_writer::attribute(std::string_view name, double value) {
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    append_number(out_, value, 1);
    out_ += '"';
    return *this;
}

markup_writer& markup_writer::attribute(std::string_view name, std::int64_t value) {
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    append_number(out_, static_cast<double>(value), 0);
    out_ += '"';
    return *this;
}

markup_writer& markup_writer::text(std::string_view text) {
    close_start_tag();
    append_escaped(out_, text);
    return *this;
}

markup_writer& markup_writer::fixed(double value, int decimals) {
    close_start_tag();
    append_fixed(out_, value, decimals);
    return *this;
}

void markup_writer::end() {
    close_start_tag();
    out_ += "</";
    out_ += open_.back();
    out_ += '>';
    open_.pop_back();
}

void markup_writer::end_void() {
    out_ += "/>";
    in_start_tag_ = false;
    open_.pop_back();
}

void markup_writer::element(std::string_view name, std::string_view text) {
    begin(name).text(text);
    end();
}

void markup_writer::element(std::string_view name, std::string_view class_name, std::string_view text) {
    begin(name, class_name).text(text);
    end();
}

void markup_writer::markup(std::string_view trusted) {
    close_start_tag();
    out_ += trusted;
}

void markup_writer::close_start_tag() {
    if (!in_start_tag_) return;
    out_ += '>';
    in_start_tag_ = false;
}

} // namespace desk::drawing
