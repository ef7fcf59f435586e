#pragma once

#include "edid/format/buffer.h"

#include <cstdint>

namespace desk {

/// The buffer that a procedure works on; any other value means `trans_buff`.
namespace buff {

inline constexpr std::uint8_t write = 1;
inline constexpr std::uint8_t read = 2;
inline constexpr std::uint8_t trans = 3;

} // namespace buff

/// The three buffers that all windows share.
struct edid_buffers {
    edid_buffer write_buff{}; ///< what WRITE sends, VERIFY and COMP expect
    edid_buffer read_buff{};  ///< what a sink returned
    edid_buffer trans_buff{}; ///< what the translation and the report show

    /// The buffer for a value of `buff`.
    edid_buffer& of(std::uint8_t buff_type);

    /// The number of bytes in which `write_buff` and `read_buff` differ.
    int different_bytes() const;
};

} // namespace desk
