#pragma once

#include "edid/buffers.h"
#include "edid/shared_fields.h"

#include <cstdint>

namespace desk {

/// Reads and stores the serial number of an EDID (VESA E-EDID, section 3.4.3), and corrects the checksum of block 0.
class serial_number {
public:
    serial_number(edid_buffers& buffers, shared_fields& fields) : buffers_(buffers), fields_(fields) {}

    /// `sn_value` := the number in the chosen buffer.
    void get_sn(std::uint8_t buff_type);
    /// Stores `sn_value` in the chosen buffer and corrects its checksum. Throws failure::overflow for a byte that does
    /// not fit. Intended: for a `buff_type` other than 1 it stores zeros.
    void set_sn(std::uint8_t buff_type);
    /// Stores the checksum that block 0 needs in byte 127. Throws failure::overflow for a block that needs 256.
    void cal_checksum(std::uint8_t buff_type);

private:
    edid_buffers& buffers_;
    shared_fields& fields_;
};

} // namespace desk
