#pragma once

#include "edid/format/file_kind.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace desk {

/// Receives the bytes of an EDID file from its reader. There can be more than 256 of them.
class byte_receiver {
public:
    virtual ~byte_receiver() = default;
    virtual void take(std::uint8_t byte) = 0;
    /// The end of a line of a HEX file that has bytes.
    virtual void finish_line() {}
    /// Discards the bytes so far: the capture holds one block.
    virtual void start_again() {}
    /// The end of a capture that holds one block.
    virtual void finish_one_block() {}
};

/// Reads text with hexadecimal digits in nearly any notation: "00 FF", "0x00,0xff", "00FF", with comments from "/" on.
/// Lines end with CR LF, LF or CR. False: it stopped at a misplaced "X".
bool read_hex(std::string_view file, byte_receiver& bytes);

/// Reads raw bytes. False: the file is empty.
bool read_bin(std::string_view file, byte_receiver& bytes);

/// Reads a capture that ends with the EDID: its last 256 bytes if they begin with the EDID header, otherwise its last
/// 128. False: the file is empty. Throws failure::bad_record_number for a file of fewer than 256 bytes.
/// Intended: if the header is at neither place, it searches again and again without returning, and calls `another_look`
/// each time.
bool read_ddc(std::string_view file, byte_receiver& bytes, const std::function<void()>& another_look);

/// Reads a file with the reader of its kind; `another_look` is that of `read_ddc`. Returns and throws what that reader
/// does; false for an unknown kind.
bool read_file(file_kind kind, std::string_view file, byte_receiver& bytes, const std::function<void()>& another_look);

} // namespace desk
