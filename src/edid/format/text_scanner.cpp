#include "edid/format/text_scanner.h"

#include "runtime/text.h"

namespace desk {

void scan_window_text(std::string_view text, text_findings& found) {
    bool comment = false;
    for (std::size_t p = 0; p < text.size(); ++p) {
        if (text[p] == '/') {
            comment = true;
            found.comment_begins();
            p += 2;
            if (p >= text.size()) break;
        }
        const bool is_cr = text[p] == '\r';
        if (comment && is_cr) {
            comment = false;
            found.comment_ends();
            p += 1;
        } else if (comment) {
            found.comment_character(text[p]);
        } else if (is_cr) {
            found.empty_line();
            p += 1;
        } else {
            found.pair(text.substr(p, 2));
            p += 2;
        }
    }
}

std::uint8_t value_of_pair(std::string_view digits) {
    unsigned value = 0;
    for (const char c : digits) {
        const int digit = hex_digit(c);
        if (digit < 0) break;
        value = value * 16 + static_cast<unsigned>(digit);
    }
    return static_cast<std::uint8_t>(value);
}

} // namespace desk
