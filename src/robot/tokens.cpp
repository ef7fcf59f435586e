#include "robot/tokens.h"

#include "runtime/text.h"

#include <nlohmann/json.hpp>

#include <charconv>

namespace desk::robot {

namespace {

/// The end of a quoted word that begins at `at`, behind its closing quote; npos without one.
std::size_t quoted_end(std::string_view line, std::size_t at) {
    for (std::size_t i = at + 1; i < line.size(); ++i) {
        if (line[i] == '\\')
            ++i;
        else if (line[i] == '"')
            return i + 1;
    }
    return std::string_view::npos;
}

} // namespace

std::optional<std::vector<token>> tokens_of(std::string_view line) {
    std::vector<token> tokens;
    for (std::size_t at = line.find_first_not_of(" \t\r"); at != std::string_view::npos;) {
        std::size_t end = 0;
        if (line[at] == '"') {
            end = quoted_end(line, at);
            if (end == std::string_view::npos) return std::nullopt;
            const auto text = nlohmann::json::parse(line.substr(at, end - at), nullptr, false);
            if (!text.is_string()) return std::nullopt;
            tokens.push_back({text.get<std::string>(), true, at});
        } else {
            end = std::min(line.find_first_of(" \t\r", at), line.size());
            tokens.push_back({std::string(line.substr(at, end - at)), false, at});
        }
        at = line.find_first_not_of(" \t\r", end);
    }
    return tokens;
}

std::optional<int> number_of(const token& w) {
    int value = 0;
    const char* const end = w.text.data() + w.text.size();
    const auto result = std::from_chars(w.text.data(), end, value);
    if (w.quoted || result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

std::optional<std::string> bytes_of_hex(std::string_view digits) {
    if (digits.size() % 2 != 0) return std::nullopt;
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned value = 0;
        const char* const end = digits.data() + i + 2;
        const auto result = std::from_chars(digits.data() + i, end, value, 16);
        if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

std::string hex_of_bytes(std::string_view bytes) {
    std::string digits;
    for (const char c : bytes)
        digits += hex2(static_cast<std::uint8_t>(c));
    return digits;
}

} // namespace desk::robot
