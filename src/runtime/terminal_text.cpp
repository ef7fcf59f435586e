#include "runtime/terminal_text.h"

#include "runtime/windows_1252.h"

#include <cstddef>
#include <vector>

namespace desk {

namespace {

bool is_control(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

} // namespace

std::string terminal_text(std::string_view text) {
    const std::vector<char32_t> characters = characters_of(text);
    std::string result;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const char32_t c = characters[i];
        const bool ends_line = c == '\n' || (c == '\r' && i + 1 < characters.size() && characters[i + 1] == '\n');
        append_utf8(result, is_control(c) && !ends_line && c != '\t' ? U'?' : c);
    }
    return result;
}

} // namespace desk
