#pragma once

#include "edid/buffer.h"
#include "runtime/subscript.h"

#include <cstdint>

namespace desk {

/// A CEA 861 data block by the address of its header byte (CEA-861-D, section 7.5). Its bytes can be read beyond its
/// end. Reading beyond byte 255 throws failure::subscript_out_of_range.
class data_block {
public:
    data_block(const edid_buffer& trans_buff, std::uint8_t address) : trans_buff_(trans_buff), address_(address) {}

    /// How many bytes its header says that it has behind it: 0 to 31.
    int length() const { return byte(0) & 31; }
    /// The byte so many places behind the header.
    std::uint8_t byte(int n) const { return element(trans_buff_, address_ + n); }

private:
    const edid_buffer& trans_buff_;
    int address_;
};

} // namespace desk
