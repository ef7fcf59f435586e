#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// Reads values one after another from a text in the run-time's list format: values are parted by a comma or a line
/// end (CR LF, LF or CR); a string may stand in double quotes, a number stands plain.
/// Every read throws failure::input_past_end_of_file where no value is left.
class list_reader {
public:
    explicit list_reader(std::string_view text) : text_(text) {}

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

/// A string as a record of the list format: in double quotes, with CR LF. A quote or a line end inside it cannot be
/// told in this format and is left out, so that the records behind it keep their places.
std::string list_record(std::string_view text);
/// A number as a record of the list format: plain, with CR LF.
std::string list_record(int number);

} // namespace desk
