#pragma once

#include "runtime/windows_1252.h"

#include <array>
#include <ctime>
#include <string>

namespace desk {

/// `text` if each of its characters has a byte in the desk's character set, otherwise the moment in this format of
/// strftime, in digits.
inline std::string in_character_set(std::string text, const char* numeric_format, const std::tm& moment) {
    if (text_from_bytes(bytes_from_text(text)) == text) return text;
    std::array<char, 32> digits{};
    return {digits.data(), std::strftime(digits.data(), digits.size(), numeric_format, &moment)};
}

inline constexpr const char* numeric_date_format = "%Y-%m-%d";
inline constexpr const char* numeric_time_format = "%H:%M:%S";

} // namespace desk
