#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// Reads values one after another from a text in the run-time's list format: values are parted by a comma or a line
/// end (CR LF, LF or CR); a string may stand in double quotes, a number stands plain.
/// Every read throws failure::input_past_end_of_file where no value is left.
class list_reader {
public:
    /// A UTF-8 byte order mark at the beginning is skipped.
    explicit list_reader(std::string_view text);

    /// A string in quotes runs to the next quote, and the quotes are dropped; one without loses its leading blanks
    /// and runs to the next comma or line end.
    std::string read_string();

    /// A number ends at a comma, a blank or a line end. Throws failure::type_mismatch for what is no number and
    /// failure::overflow for what does not fit.
    std::int16_t read_integer();
    std::uint8_t read_byte();
    float read_single();

private:
    double read_number();
    void skip_blanks();
    void skip_separator();
    bool at_line_end_or_comma() const;
    bool at_end() const { return at_ == text_.size(); }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// A string as a record of the list format, with CR LF: in double quotes, or without them where it holds one. Returns
/// nothing for a string that the format can't hold: `read_string` would return another one.
std::optional<std::string> list_record(std::string_view text);
/// A number as a record of the list format: plain, with CR LF.
std::string list_record(int number);

} // namespace desk
