#pragma once

#include "edid/buffer.h"
#include "runtime/failure.h"
#include "runtime/subscript.h"
#include "runtime/text.h"

#include <cstdint>

namespace desk {

/// The bytes of an EDID from an address on, as far as one likes.
class placed_bytes {
public:
    placed_bytes(const edid_buffer& trans_buff, int address) : trans_buff_(trans_buff), address_(address) {}

    /// The byte so many places behind the first. Throws failure::subscript_out_of_range beyond byte 255.
    std::uint8_t byte(int n) const {
        return telling([&] { return "it goes to byte " + number_text(address_ + n) + ", beyond the end of the EDID"; },
                       [&] { return element(trans_buff_, address_ + n); });
    }

private:
    const edid_buffer& trans_buff_;
    int address_;
};

} // namespace desk
