#pragma once

#include "edid/buffer.h"

#include <cstdint>

namespace desk {

/// Which buffer a procedure works on; any other value means `trans_buff`.
namespace buff {

inline constexpr std::uint8_t write = 1;
inline constexpr std::uint8_t read = 2;
inline constexpr std::uint8_t trans = 3;

} // namespace buff

/// The three buffers that all windows share.
struct edid_buffers {
    edid_buffer write_buff{}; ///< what WRITE sends and VERIFY and COMP look for
    edid_buffer read_buff{};  ///< what came from a sink
    edid_buffer trans_buff{}; ///< what is being translated

    /// 1: `write_buff`, 2: `read_buff`, any other value: `trans_buff`.
    edid_buffer& of(std::uint8_t buff_type);

    /// At how many of the 256 places `write_buff` and `read_buff` differ.
    int different_bytes() const;
};

} // namespace desk
