#include "controls/text_lines.h"

#include <algorithm>

namespace desk {

namespace {

bool continues_character(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

std::size_t characters_in(std::string_view text) {
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), continues_character));
}

enum class sort { space, word, other };

sort sort_of(char c) {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') return sort::space;
    const bool ascii_letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool beyond_ascii = static_cast<unsigned char>(c) >= 0x80;
    return ascii_letter || beyond_ascii || (c >= '0' && c <= '9') || c == '_' ? sort::word : sort::other;
}

} // namespace

void text_lines::replace(std::string_view text) {
    text_ = {};
    begins_ = std::vector<std::size_t>{0}; // frees the memory
    longest_ = 0;
    plain_ = true;
    grow(text);
}

void text_lines::grow(std::string_view text) {
    std::size_t at = text_.size();
    // this LF belongs to the CR that ended the text so far
    if (at > 0 && at < text.size() && text[at - 1] == '\r' && text[at] == '\n') begins_.back() = ++at;
    text_ = text;
    while (at < text.size()) {
        const char c = text[at++];
        if (static_cast<unsigned char>(c) >= 0x80) plain_ = false;
        if (c != '\r' && c != '\n') continue;
        longest_ = std::max(longest_, at - 1 - begins_.back());
        const bool cr_lf = c == '\r' && at < text.size() && text[at] == '\n';
        if (cr_lf)
            ++at;
        else
            plain_ = false;
        begins_.push_back(at);
    }
}

std::size_t text_lines::end_of(std::size_t line) const {
    if (line + 1 == count()) return text_.size();
    const std::size_t next = begins_.at(line + 1);
    const bool cr_lf = text_[next - 1] == '\n' && next >= begin_of(line) + 2 && text_[next - 2] == '\r';
    return next - (cr_lf ? 2 : 1);
}

std::string_view text_lines::line(std::size_t line) const {
    return text_.substr(begin_of(line), end_of(line) - begin_of(line));
}

std::size_t text_lines::longest() const { return std::max(longest_, text_.size() - begins_.back()); }

std::size_t text_lines::line_at(std::size_t offset) const {
    const auto after = std::upper_bound(begins_.begin(), begins_.end(), offset);
    return static_cast<std::size_t>(after - begins_.begin()) - 1;
}

std::size_t text_lines::column_at(std::size_t offset) const {
    const std::size_t begin = begin_of(line_at(offset));
    return characters_in(text_.substr(begin, offset - begin));
}

std::size_t text_lines::offset_of(std::size_t line, std::size_t column) const {
    const std::size_t end = end_of(line);
    std::size_t at = begin_of(line);
    for (; at < end && column > 0; --column) {
        ++at;
        while (at < end && continues_character(text_[at]))
            ++at;
    }
    return at;
}

std::size_t text_lines::next_character(std::size_t offset) const {
    if (offset >= text_.size()) return text_.size();
    const std::size_t line = line_at(offset);
    if (offset >= end_of(line)) return begin_of(line + 1);
    do
        ++offset;
    while (offset < text_.size() && continues_character(text_[offset]));
    return offset;
}

std::size_t text_lines::previous_character(std::size_t offset) const {
    if (offset == 0) return 0;
    const std::size_t line = line_at(offset);
    if (offset == begin_of(line)) return end_of(line - 1);
    do
        --offset;
    while (offset > 0 && continues_character(text_[offset]));
    return offset;
}

std::size_t text_lines::next_word(std::size_t offset) const {
    const auto from = [&](std::size_t at, auto skipped) {
        while (at < text_.size() && skipped(sort_of(text_[at])))
            ++at;
        return at;
    };
    if (offset >= text_.size()) return text_.size();
    const sort first = sort_of(text_[offset]);
    const std::size_t end = from(offset, [&](sort s) { return s == first; });
    return from(end, [](sort s) { return s == sort::space; });
}

std::size_t text_lines::previous_word(std::size_t offset) const {
    while (offset > 0 && sort_of(text_[offset - 1]) == sort::space)
        --offset;
    if (offset == 0) return 0;
    const sort last = sort_of(text_[offset - 1]);
    while (offset > 0 && sort_of(text_[offset - 1]) == last)
        --offset;
    return offset;
}

text_lines::range text_lines::word_at(std::size_t offset) const {
    const std::size_t line = line_at(offset);
    range word = {offset, offset};
    const std::size_t end = end_of(line);
    const std::size_t begin = begin_of(line);
    if (begin == end) return word;
    const sort present = sort_of(text_[std::min(offset, end - 1)]);
    while (word.begin > begin && sort_of(text_[word.begin - 1]) == present)
        --word.begin;
    while (word.end < end && sort_of(text_[word.end]) == present)
        ++word.end;
    return word;
}

text_lines::range text_lines::whole_line(std::size_t line) const {
    return {begin_of(line), line + 1 == count() ? text_.size() : begin_of(line + 1)};
}

} // namespace desk
