#include "runtime/list_format.h"

#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace desk {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

} // namespace

list_reader::list_reader(std::string_view text) : text_(text) {
    if (text_.starts_with(byte_order_mark)) text_.remove_prefix(byte_order_mark.size());
}

bool list_reader::at_line_end_or_comma() const { return text_[at_] == ',' || text_[at_] == '\r' || text_[at_] == '\n'; }

void list_reader::skip_blanks() {
    while (!at_end() && (text_[at_] == ' ' || text_[at_] == '\t'))
        ++at_;
}

void list_reader::skip_separator() {
    skip_blanks();
    if (at_end() || !at_line_end_or_comma()) return;
    const bool cr_lf = text_.substr(at_).starts_with("\r\n");
    at_ += cr_lf ? 2 : 1;
}

std::string list_reader::read_string() {
    skip_blanks();
    if (at_end()) throw runtime_failure(failure::input_past_end_of_file, "a text is missing at the end of the file");
    std::string value;
    if (text_[at_] == '"') {
        ++at_;
        const std::size_t end = std::min(text_.find('"', at_), text_.size());
        value = text_.substr(at_, end - at_);
        at_ = std::min(end + 1, text_.size());
    } else {
        const std::size_t start = at_;
        while (!at_end() && !at_line_end_or_comma())
            ++at_;
        value = text_.substr(start, at_ - start);
    }
    skip_separator();
    return value;
}

double list_reader::read_number() {
    skip_blanks();
    if (at_end()) throw runtime_failure(failure::input_past_end_of_file, "a number is missing at the end of the file");
    const std::size_t start = at_;
    while (!at_end() && !at_line_end_or_comma() && text_[at_] != ' ' && text_[at_] != '\t')
        ++at_;
    const std::string word(text_.substr(start, at_ - start));
    skip_separator();
    if (!is_number(word)) {
        throw runtime_failure(failure::type_mismatch, "\"" + as_utf8(word.substr(0, 40)) + "\" is not a number");
    }
    return val(word);
}

std::int16_t list_reader::read_integer() { return to_integer(read_number()); }
std::uint8_t list_reader::read_byte() { return to_byte(read_number()); }

float list_reader::read_single() {
    const double value = read_number();
    if (std::abs(value) > std::numeric_limits<float>::max())
        throw runtime_failure(failure::overflow, number_text(value) + " does not fit into a 32-bit floating number");
    return static_cast<float>(value);
}

std::optional<std::string> list_record(std::string_view text) {
    if (text.find('"') == std::string_view::npos) return '"' + std::string(text) + '"' + std::string(line_end);
    const bool can_be_plain = text.find_first_of(",\r\n") == std::string_view::npos &&
                              std::string_view("\" \t").find(text.front()) == std::string_view::npos;
    return can_be_plain ? std::optional(std::string(text) + std::string(line_end)) : std::nullopt;
}

std::string list_record(int number) { return number_text(number) + std::string(line_end); }

} // namespace desk
