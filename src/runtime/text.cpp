#include "runtime/text.h"

#include "runtime/failure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace desk {

namespace {

/// A finite number as decimal digits: 0.d1d2d3... x 10^point, with its sign.
struct decimal_digits {
    bool negative = false;
    std::string digits; // no trailing zeros; empty for zero
    int point = 0;
};

decimal_digits decimals_of(double value, int significant) {
    std::array<char, 64> buffer{};
    // "d.ddddde+xx"
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                   std::chars_format::scientific, significant - 1)
                         .ptr;
    *end = '\0';
    const std::string_view printed(buffer.data());
    const std::size_t exponent_at = printed.find('e');
    decimal_digits d;
    d.negative = value < 0;
    d.digits.push_back(printed[0]);
    if (exponent_at > 2) d.digits += printed.substr(2, exponent_at - 2);
    d.point = std::atoi(buffer.data() + exponent_at + 1) + 1;
    d.digits.erase(d.digits.find_last_not_of('0') + 1);
    if (d.digits.empty()) d = {};
    return d;
}

std::string not_finite_text(double value) { return std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf"; }

std::string number_text(double value, int significant) {
    if (!std::isfinite(value)) return not_finite_text(value);
    const decimal_digits d = decimals_of(value, significant);
    if (d.digits.empty()) return "0";
    const std::string sign = d.negative ? "-" : "";
    const int count = static_cast<int>(d.digits.size());
    if (d.point > significant || d.point <= -significant) {
        const int exponent = d.point - 1;
        std::string mantissa = d.digits.substr(0, 1);
        if (count > 1) mantissa += "." + d.digits.substr(1);
        const std::string magnitude = std::to_string(std::abs(exponent));
        return sign + mantissa + "E" + (exponent < 0 ? "-" : "+") + (magnitude.size() < 2 ? "0" : "") + magnitude;
    }
    if (d.point <= 0) return sign + "0." + std::string(static_cast<std::size_t>(-d.point), '0') + d.digits;
    if (d.point >= count) return sign + d.digits + std::string(static_cast<std::size_t>(d.point - count), '0');
    const auto whole = static_cast<std::size_t>(d.point);
    return sign + d.digits.substr(0, whole) + "." + d.digits.substr(whole);
}

/// Replaces a plus by a leading space, and drops the zero before the decimal point.
std::string as_str(std::string text) {
    const bool negative = text.starts_with('-');
    if (negative) text.erase(0, 1);
    if (text.starts_with("0.")) text.erase(0, 1);
    return (negative ? "-" : " ") + text;
}

std::string three_decimals(double value, bool keep_zero) {
    if (!std::isfinite(value)) return not_finite_text(value);
    const decimal_digits d = decimals_of(value, 15);
    // digits before the point, three after it, and the one that decides the rounding
    const int wanted = d.point + 3;
    std::string kept = wanted > 0 ? d.digits.substr(0, static_cast<std::size_t>(wanted)) : "";
    const bool up = wanted >= 0 && static_cast<std::size_t>(wanted) < d.digits.size() &&
                    d.digits[static_cast<std::size_t>(wanted)] >= '5';
    const int places = std::max(wanted, 3);
    if (wanted > static_cast<int>(kept.size())) kept.append(static_cast<std::size_t>(wanted) - kept.size(), '0');
    kept.insert(0, static_cast<std::size_t>(places) - kept.size(), '0');
    if (up) {
        auto digit = kept.rbegin();
        while (digit != kept.rend() && *digit == '9')
            *digit++ = '0';
        if (digit == kept.rend())
            kept.insert(0, 1, '1');
        else
            ++*digit;
    }
    std::string whole = kept.substr(0, kept.size() - 3);
    const std::string fraction = kept.substr(kept.size() - 3);
    if (whole.empty() && keep_zero) whole = "0";
    const bool is_zero = kept.find_first_not_of('0') == std::string::npos;
    return (d.negative && !is_zero ? "-" : "") + whole + "." + fraction;
}

/// Length of the longest numeric prefix; 0 if there is none.
std::size_t numeric_start(std::string_view text) {
    std::size_t at = 0;
    const auto take_sign = [&] { at += at < text.size() && (text[at] == '-' || text[at] == '+') ? 1 : 0; };
    const auto take_digits = [&] {
        const std::size_t from = at;
        while (at < text.size() && is_digit(text[at]))
            ++at;
        return at - from;
    };
    take_sign();
    std::size_t digits = take_digits();
    if (at < text.size() && text[at] == '.') {
        ++at;
        digits += take_digits();
    }
    if (digits == 0) return 0;
    const std::size_t mantissa_end = at;
    if (at == text.size() || (text[at] != 'E' && text[at] != 'e')) return mantissa_end;
    ++at;
    take_sign();
    return take_digits() > 0 ? at : mantissa_end;
}

/// Places of the first significant digit before the decimal point, including the exponent; 0 or less after it. For an
/// unsigned number.
std::int64_t power_of_ten(std::string_view number) {
    const std::size_t exponent_at = std::min(number.find_first_of("Ee"), number.size());
    const std::string_view mantissa = number.substr(0, exponent_at);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_not_of("0."), mantissa.size());
    const std::int64_t places = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first) + (first > point);
    // no text is long enough to outweigh a larger exponent
    constexpr std::int64_t far = 1'000'000'000'000;
    std::int64_t exponent = 0;
    std::string_view digits = number.substr(std::min(exponent_at + 1, number.size()));
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) digits.remove_prefix(1);
    for (const char c : digits)
        exponent = std::min(exponent * 10 + (c - '0'), far);
    return places + (negative ? -exponent : exponent);
}

template <class Change>
std::string each_character(std::string_view text, Change change) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), change);
    return result;
}

} // namespace

std::string number_text(double value) { return number_text(value, 15); }
std::string number_text(float value) { return number_text(static_cast<double>(value), 7); }
std::string number_text(int value) { return std::to_string(value); }

std::string str(double value) { return as_str(number_text(value)); }
std::string str(float value) { return as_str(number_text(value)); }
std::string str(int value) { return as_str(number_text(value)); }

std::string hex(std::uint32_t value) {
    std::array<char, 8> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, 16).ptr;
    return upper_case(std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())));
}

std::string hex2(std::uint8_t value) { return (value < 16 ? "0" : "") + hex(value); }

void append_listed_byte(std::string& text, std::uint8_t byte, std::size_t index) {
    constexpr std::size_t bytes_of_line = 8;
    text += hex2(byte);
    text += ' ';
    if ((index + 1) % bytes_of_line != 0) return;
    text += "//";
    text += hex(static_cast<std::uint32_t>(index));
    text += line_end;
}

double val(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const std::string_view number = text.substr(0, numeric_start(text));
    if (number.empty()) return 0;
    const bool negative = number.front() == '-';
    const std::string_view digits = number.substr(negative || number.front() == '+' ? 1 : 0);
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // out of range is too large or too close to zero
        if (power_of_ten(digits) > 0)
            throw runtime_failure(failure::overflow, "the number " + std::string(number) + " is too large");
        value = 0;
    }
    return negative ? -value : value;
}

bool is_number(std::string_view text) { return !text.empty() && numeric_start(text) == text.size(); }

std::string format_hash(double value) { return three_decimals(value, false); }
std::string format_zero(double value) { return three_decimals(value, true); }

std::string trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return "";
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string lower_case(std::string_view text) {
    return each_character(text, [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
}

std::string upper_case(std::string_view text) {
    return each_character(text, [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

int hex_digit(char c) {
    if (is_digit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

} // namespace desk
