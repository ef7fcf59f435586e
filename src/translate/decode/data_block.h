#pragma once

#include "translate/decode/placed_bytes.h"

#include <string>

namespace desk {

/// A CEA 861 data block at the address of its header byte (CEA-861-D, section 7.5). Bytes beyond its end can be read.
class data_block : public placed_bytes {
public:
    using placed_bytes::placed_bytes;

    /// The number of bytes after the header, as the header says: 0 to 31.
    int length() const { return byte(0) & 31; }
};

/// Decodes a data block; a failure reports its kind and address.
template <class Decode>
decltype(auto) decode_data_block(const char* kind, const edid_buffer& trans_buff, std::uint8_t address, Decode decode) {
    return while_doing(
        [&] { return std::string("Decoding the ") + kind + " data block at address 0x" + hex2(address); },
        [&] { return decode(data_block(trans_buff, address)); });
}

} // namespace desk
