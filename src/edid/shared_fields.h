#pragma once

#include <cstdint>
#include <string>

namespace desk {

/// Fields that all windows of the EDID side share.
struct shared_fields {
    std::string edid_file_name; ///< path of the file last opened, or last saved from the WRITE side
    std::uint8_t edid_src = 1;  ///< the sink: 1 HDMI/DVI OUT, 2 HDMI/DVI IN, 3 VGA OUT

    /// Who opened frm_diag: 1 HEX style, 2 automatic run, 5 WRITE checksum, 6 READ checksum, 3 none.
    std::int16_t diag_mode = 3;

    // kept in the settings file
    std::uint8_t eeprom_size_index = 0; ///< 0 to 3: 256, 512, 1024 or 2048 bytes
    std::uint8_t unused_byte_index = 0; ///< 0: 0x00, 1: 0xFF
    std::uint8_t checksum_4digits = 0;  ///< 1: the lower four digits only
};

} // namespace desk
