#include "runtime/windows_1252.h"

#include "runtime/failure.h"

#include <algorithm>
#include <array>
#include <optional>

namespace desk {

namespace {

// the characters of 0x80 to 0x9F; all other bytes are their own code
constexpr std::array<char32_t, 32> upper_controls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

bool is_ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }

std::optional<std::uint8_t> byte_of(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<std::uint8_t>(character);
    for (std::size_t i = 0; i < upper_controls.size(); ++i)
        if (upper_controls.at(i) == character) return static_cast<std::uint8_t>(0x80 + i);
    return std::nullopt;
}

/// The characters of UTF-8 text; nothing where it is no UTF-8.
std::optional<std::vector<char32_t>> decode_utf8(std::string_view text) {
    std::vector<char32_t> characters;
    characters.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<std::uint8_t>(text[i++]);
        if (lead < 0x80) {
            characters.push_back(lead);
            continue;
        }
        const int more = lead >= 0xF0 && lead < 0xF5   ? 3
                         : lead >= 0xE0 && lead < 0xF0 ? 2
                         : lead >= 0xC2 && lead < 0xE0 ? 1
                                                       : 0;
        if (more == 0) return std::nullopt;
        char32_t character = lead & (0x3FU >> more);
        for (int k = 0; k < more; ++k) {
            if (i == text.size()) return std::nullopt;
            const auto next = static_cast<std::uint8_t>(text[i++]);
            if ((next & 0xC0U) != 0x80) return std::nullopt;
            character = (character << 6U) | (next & 0x3FU);
        }
        const bool too_long = (more == 2 && character < 0x800) || (more == 3 && character < 0x10000);
        const bool no_character = character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF);
        if (too_long || no_character) return std::nullopt;
        characters.push_back(character);
    }
    return characters;
}

} // namespace

char32_t character_of(std::uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? upper_controls.at(byte - 0x80U) : char32_t{byte};
}

void append_utf8(std::string& text, char32_t character) {
    if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) character = 0xFFFD;
    const auto put = [&](char32_t bits) { text.push_back(static_cast<char>(bits)); };
    const auto put_more = [&](unsigned shift) { put(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0U | (character >> 6U));
        put_more(0);
    } else if (character < 0x10000) {
        put(0xE0U | (character >> 12U));
        put_more(6);
        put_more(0);
    } else {
        put(0xF0U | (character >> 18U));
        put_more(12);
        put_more(6);
        put_more(0);
    }
}

std::string text_from_bytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes)
        append_utf8(text, character_of(static_cast<std::uint8_t>(c)));
    return text;
}

std::string bytes_from_text(std::string_view text) {
    // most texts are; a long one would take five times its memory below
    if (std::all_of(text.begin(), text.end(), is_ascii)) return std::string(text);
    const auto characters = decode_utf8(text);
    if (!characters) return std::string(text); // no UTF-8: these are bytes already
    std::string bytes;
    bytes.reserve(characters->size());
    for (const char32_t c : *characters)
        bytes.push_back(static_cast<char>(byte_of(c).value_or('?')));
    return bytes;
}

std::vector<char32_t> characters_of(std::string_view text) {
    if (auto characters = decode_utf8(text)) return *std::move(characters);
    std::vector<char32_t> characters;
    for (const char c : text)
        characters.push_back(character_of(static_cast<std::uint8_t>(c)));
    return characters;
}

std::size_t character_count(std::string_view text) { return characters_of(text).size(); }

std::string_view first_characters(std::string_view text, std::size_t count) {
    std::size_t at = 0;
    for (; at < text.size() && count > 0; --count) {
        ++at;
        while (at < text.size() && (static_cast<std::uint8_t>(text[at]) & 0xC0U) == 0x80)
            ++at;
    }
    return text.substr(0, at);
}

std::string_view last_characters(std::string_view text, std::size_t count) {
    const std::size_t all = character_count(text);
    return text.substr(first_characters(text, all - std::min(count, all)).size());
}

std::string without_last_characters(std::string_view text, std::size_t count) {
    const std::size_t all = character_count(text);
    if (all < count) {
        throw runtime_failure(failure::invalid_procedure_call,
                              "\"" + std::string(text) + "\" does not have " + std::to_string(count) + " characters");
    }
    return std::string(first_characters(text, all - count));
}

std::string as_utf8(std::string_view text) { return decode_utf8(text) ? std::string(text) : text_from_bytes(text); }

} // namespace desk
