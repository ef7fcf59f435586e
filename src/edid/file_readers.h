#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace desk {

/// What the readers of EDID files hand their bytes to. There can be more than 256 of them.
class byte_receiver {
public:
    virtual ~byte_receiver() = default;
    virtual void take(std::uint8_t byte) = 0;
    /// A line of a HEX file is finished.
    virtual void finish_line() {}
    /// What has come so far is void: the capture holds one block.
    virtual void start_again() {}
    /// The one block of the capture has come.
    virtual void finish_one_block() {}
};

/// Reads text with hexadecimal digits in nearly any notation: "00 FF", "0x00,0xff", "00FF", with comments from "/" on.
/// Lines end at CR LF, LF or CR. False: an "X" stands where it doesn't belong, and reading has stopped there.
bool read_hex(std::string_view file, byte_receiver& bytes);

/// Reads raw bytes from the first one on. False: the file is empty.
bool read_bin(std::string_view file, byte_receiver& bytes);

/// Reads a capture with the EDID at its very end: its last 256 bytes where they begin with the EDID header, else its
/// last 128. False: the file is empty. Throws failure::bad_record_number for a file under 256 bytes.
/// The desk behaves so: without the header at either place it looks there again and again and does not return;
/// `another_look` is called each time.
bool read_ddc(std::string_view file, byte_receiver& bytes, const std::function<void()>& another_look);

} // namespace desk
