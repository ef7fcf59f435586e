#pragma once

#include "edid/buffers.h"
#include "edid/shared_fields.h"

#include <cstdint>

namespace desk {

/// The serial number of an EDID: bytes 12 (lowest) to 15 of block 0 (VESA E-EDID, section 3.4.3), and the checksum that
/// changes with it.
class serial_number {
public:
    serial_number(edid_buffers& buffers, shared_fields& fields) : buffers_(buffers), fields_(fields) {}

    /// `sn_value` := the number in the chosen buffer.
    void get_sn(std::uint8_t buff_type);
    /// Stores `sn_value` in the chosen buffer and mends its block 0. Throws failure::overflow for a byte that does not
    /// fit. The desk behaves so: only for `buff_type` 1 is it the number; for any other zeros are stored.
    void set_sn(std::uint8_t buff_type);
    /// Puts the checksum that block 0 needs into byte 127. Throws failure::overflow for a block that needs 256.
    void cal_checksum(std::uint8_t buff_type);

private:
    edid_buffers& buffers_;
    shared_fields& fields_;
};

} // namespace desk
