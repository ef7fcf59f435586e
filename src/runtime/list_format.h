#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// Reads consecutive values in the list format: separated by a comma or a line end (CR LF, LF or CR); strings may be
/// in double quotes, numbers are not. Every read throws failure::input_past_end_of_file if no value is left.
class list_reader {
public:
    /// Skips a UTF-8 byte order mark at the beginning.
    explicit list_reader(std::string_view text);

    /// A quoted string runs to the next quote and loses its quotes; an unquoted one loses its leading spaces and runs
    /// to the next comma or line end.
    std::string read_string();

    /// A number ends at a comma, a space or a line end. Throws failure::type_mismatch if it is not a number and
    /// failure::overflow if it does not fit.
    std::int16_t read_integer();
    std::uint8_t read_byte();
    float read_single();

private:
    double read_number();
    void skip_spaces();
    void skip_separator();
    bool at_line_end_or_comma() const;
    bool at_end() const { return at_ == text_.size(); }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// A string as a record with CR LF: in double quotes, or without them if it contains one. Returns nothing if
/// `read_string` would return a different string.
std::optional<std::string> list_record(std::string_view text);
/// A number as a record: without quotes, with CR LF.
std::string list_record(int number);

} // namespace desk
