#pragma once

#include "runtime/windows_1252.h"

#include <string>

namespace desk::test {

inline std::string utf8(char32_t character) {
    std::string text;
    append_utf8(text, character);
    return text;
}

} // namespace desk::test
