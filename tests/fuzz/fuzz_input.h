#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace desk::fuzz {

/// The bytes of an input, read from the front. After its end all numbers are 0 and all texts empty.
class fuzz_input {
public:
    fuzz_input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const { return rest_.empty(); }

    std::uint8_t byte() { return empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(text(1).front()); }
    /// From 0 to below `limit`, which is at most 256.
    int below(int limit) { return byte() % limit; }
    bool yes() { return below(2) == 1; }
    std::string_view text(std::size_t count) {
        const std::string_view front = rest_.substr(0, count);
        rest_.remove_prefix(front.size());
        return front;
    }
    /// A text preceded by its length.
    std::string_view text() { return text(byte()); }
    /// The same, shorter than `limit`.
    std::string_view short_text(int limit) { return text(static_cast<std::size_t>(below(limit))); }
    std::string_view rest() { return text(rest_.size()); }

private:
    std::string_view rest_;
};

/// Splits a text at separators.
inline std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    while (true) {
        const std::size_t end = std::min(text.find(separator), text.size());
        pieces.emplace_back(text.substr(0, end));
        if (end == text.size()) return pieces;
        text.remove_prefix(end + 1);
    }
}

} // namespace desk::fuzz
