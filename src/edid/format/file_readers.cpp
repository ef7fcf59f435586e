#include "edid/format/file_readers.h"

#include "edid/format/buffer.h"
#include "runtime/failure.h"
#include "runtime/text.h"
#include "runtime/trim_and_pad.h"

#include <algorithm>
#include <array>
#include <string>

namespace desk {

namespace {

/// Pairs the digits of one line of a HEX file into bytes.
class hex_line {
public:
    explicit hex_line(byte_receiver& bytes) : bytes_(bytes) {}

    /// False: a misplaced "X".
    bool take(char c) {
        if (hex_digit(c) >= 0) {
            pair_.push_back(c);
            if (pair_.size() == 2) complete();
        } else if (c == 'X' || c == 'x') {
            if (pair_ != "0") return false;
            pair_.clear();
        } else {
            separate();
        }
        return true;
    }

    /// A non-digit after a single digit ends its byte.
    void separate() {
        if (!pair_.empty()) complete();
    }

private:
    void complete() {
        int value = 0;
        for (const char digit : pair_)
            value = value * 16 + hex_digit(digit);
        pair_.clear();
        bytes_.take(static_cast<std::uint8_t>(value));
    }

    byte_receiver& bytes_;
    std::string pair_;
};

/// Reads a line. False: a misplaced "X".
bool read_hex_line(std::string_view raw, byte_receiver& bytes) {
    raw = raw.substr(0, raw.find('/'));
    std::string line(raw);
    if (trim_tabs(line).empty()) return true;
    hex_line digits(bytes);
    if (!std::all_of(line.begin(), line.end(), [&](char c) { return digits.take(c); })) return false;
    // trimmed space still ends a single last digit; without it the digit is dropped
    if (raw.back() != line.back()) digits.separate();
    bytes.finish_line();
    return true;
}

} // namespace

bool read_hex(std::string_view file, byte_receiver& bytes) {
    while (!file.empty()) {
        const std::size_t end = std::min(file.find_first_of("\r\n"), file.size());
        if (!read_hex_line(file.substr(0, end), bytes)) return false;
        const bool cr_lf = file.substr(end).starts_with(line_end);
        file.remove_prefix(std::min(end + (cr_lf ? 2 : 1), file.size()));
    }
    return true;
}

bool read_bin(std::string_view file, byte_receiver& bytes) {
    for (const char byte : file)
        bytes.take(static_cast<std::uint8_t>(byte));
    return !file.empty();
}

bool read_ddc(std::string_view file, byte_receiver& bytes, const std::function<void()>& another_look) {
    if (file.empty()) return false;
    if (file.size() < edid_size) {
        throw runtime_failure(failure::bad_record_number,
                              "a capture of " + std::to_string(file.size()) + " bytes is shorter than 256");
    }
    bool one_block = false;
    std::size_t position = file.size() - edid_size;
    for (std::size_t n = 0; position < file.size();) {
        const auto byte = static_cast<std::uint8_t>(file[position]);
        if (n < edid_header.size() && byte != edid_header.at(n)) {
            if (one_block) another_look();
            one_block = true;
            position = file.size() - edid_block_size;
            n = 0;
            bytes.start_again();
            continue;
        }
        bytes.take(byte);
        ++n;
        ++position;
    }
    if (one_block) bytes.finish_one_block();
    return true;
}

bool read_file(file_kind kind, std::string_view file, byte_receiver& bytes, const std::function<void()>& another_look) {
    switch (kind) {
    case file_kind::hex:
        return read_hex(file, bytes);
    case file_kind::bin:
        return read_bin(file, bytes);
    case file_kind::ddc:
        return read_ddc(file, bytes, another_look);
    default:
        return false;
    }
}

} // namespace desk
