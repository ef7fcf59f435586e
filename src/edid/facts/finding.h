#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace desk::facts {

enum class severity : std::uint8_t {
    note,    ///< allowed, but unusual
    warning, ///< breaks a standard; the data can still be used
    error,   ///< breaks a standard; the data is wrong or lost
};

/// "note", "warning" or "error".
std::string_view name_of(severity level);

/// An oddity of an EDID.
struct finding {
    severity level = severity::note;
    std::uint16_t block = 0;
    std::uint8_t offset = 0; ///< in the block
    std::string text;        ///< a sentence
    std::string_view clause; ///< the clause of the standard that it breaks; static
};

} // namespace desk::facts
