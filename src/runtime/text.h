#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

inline constexpr std::string_view line_end = "\r\n";

/// A number as text without a leading space: 0.5 gives "0.5". At most 15 significant digits.
std::string number_text(double value);
/// The same with at most 7 significant digits.
std::string number_text(float value);
std::string number_text(int value);

/// A number as text with a leading space unless negative; a fraction loses the zero before its point: 0.64 gives "
/// .64". At most 15 significant digits (7 for a 32-bit number).
std::string str(double value);
std::string str(float value);
std::string str(int value);

/// Upper-case hexadecimal without padding.
std::string hex(std::uint32_t value);
/// Two upper-case hexadecimal digits.
std::string hex2(std::uint8_t value);

/// Appends a byte to a list with eight bytes a line: two digits and a space; after the eighth "//", its index without
/// padding and the line end.
void append_listed_byte(std::string& text, std::uint8_t byte, std::size_t index);

/// The longest numeric prefix of a text: spaces and tabs, sign, digits, one point, exponent with E. 0 if there is
/// none. Throws failure::overflow if the number is too large for a double.
double val(std::string_view text);
/// Whether the whole text is one number: sign, digits, one point, exponent with E, and nothing else.
bool is_number(std::string_view text);

/// Three decimals, rounded half away from zero on the decimal digits. `format_hash` is the pattern "###.000": a value
/// below 1 has no zero before its point.
std::string format_hash(double value);
/// The patterns "##0.000" and "0.000": a value below 1 keeps its zero.
std::string format_zero(double value);

/// Removes spaces, and nothing else, from both ends.
std::string trim(std::string_view text);

/// Change the case of ASCII letters only.
std::string lower_case(std::string_view text);
std::string upper_case(std::string_view text);

bool is_digit(char c);
/// The value of a hexadecimal digit in either case, or -1.
int hex_digit(char c);

} // namespace desk
