#include "runtime/typed_lines.h"

namespace desk {

void typed_lines::add(std::string_view typed) {
    for (const char c : typed) {
        if (c == '\n') {
            text_ += c;
            last_line_ = 0;
        } else if (last_line_ <= longest) {
            text_ += c;
            ++last_line_;
        }
    }
}

void typed_lines::end() {
    if (last_line_ != 0) add("\n");
}

std::optional<std::string> typed_lines::next() {
    const std::size_t size = text_.find('\n');
    if (size == std::string::npos) return std::nullopt;
    std::string line = text_.substr(0, size);
    text_.erase(0, size + 1);
    return line;
}

} // namespace desk
