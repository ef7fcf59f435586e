#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace desk {

/// The lines of a long text, and how a cursor moves through it. Lines end with CR LF, CR or LF. Offsets count bytes of
/// UTF-8 and are never inside a character or between CR and LF; columns count characters.
class text_lines {
public:
    /// Takes another text, which must not change or move until the next call of replace() or grow().
    void replace(std::string_view text);
    /// Takes the same text with more at its end.
    void grow(std::string_view text);

    std::string_view text() const { return text_; }
    /// The number of lines; an empty text has one.
    std::size_t count() const { return begins_.size(); }
    std::size_t begin_of(std::size_t line) const { return begins_.at(line); }
    /// The offset after the last character of the line, before its line end.
    std::size_t end_of(std::size_t line) const;
    std::string_view line(std::size_t line) const;
    /// The length of the longest line in bytes.
    std::size_t longest() const;
    /// Whether all characters are ASCII and all lines end with CR LF, as in every long text of the desk. It may be
    /// false for such a text if it has grown.
    bool is_plain() const { return plain_; }

    std::size_t line_at(std::size_t offset) const;
    std::size_t column_at(std::size_t offset) const;
    /// The offset of a column; of the line's end if the line is shorter.
    std::size_t offset_of(std::size_t line, std::size_t column) const;

    std::size_t next_character(std::size_t offset) const;
    std::size_t previous_character(std::size_t offset) const;
    /// The beginning of the next word.
    std::size_t next_word(std::size_t offset) const;
    /// The beginning of the previous word, or of the word that contains the offset.
    std::size_t previous_word(std::size_t offset) const;

    /// A part of a text.
    struct range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    /// The run of letters and digits, of white space, or of other characters around an offset.
    range word_at(std::size_t offset) const;
    /// A whole line with its line end.
    range whole_line(std::size_t line) const;

private:
    std::string_view text_;
    std::vector<std::size_t> begins_ = {0};
    std::size_t longest_ = 0; // of all lines but the last
    bool plain_ = true;
};

} // namespace desk
