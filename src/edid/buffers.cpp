#include "edid/buffers.h"

namespace desk {

edid_buffer& edid_buffers::of(std::uint8_t buff_type) {
    switch (buff_type) {
    case buff::write:
        return write_buff;
    case buff::read:
        return read_buff;
    default:
        return trans_buff;
    }
}

int edid_buffers::different_bytes() const {
    int count = 0;
    for (std::size_t i = 0; i < edid_size; ++i) {
        if (write_buff.at(i) != read_buff.at(i)) ++count;
    }
    return count;
}

} // namespace desk
