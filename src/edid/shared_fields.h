#pragma once

#include <cstdint>
#include <string>

namespace desk {

/// The values of `diag_mode`: who opened frm_diag.
namespace diag {

inline constexpr std::int16_t hex_style = 1;
inline constexpr std::int16_t automatic_run = 2;
inline constexpr std::int16_t write_checksum = 5;
inline constexpr std::int16_t read_checksum = 6;
inline constexpr std::int16_t none = 3;

} // namespace diag

/// The values of `hex_type`: how a HEX file is written.
namespace hex_style {

inline constexpr std::int16_t simple = 1;     ///< the window's text unchanged
inline constexpr std::int16_t c_language = 2; ///< the lines of an initialiser

} // namespace hex_style

/// The fields that all windows of the EDID side share.
struct shared_fields {
    std::string edid_file_name; ///< path of the file last opened, or last saved from the WRITE window
    std::string
        write_text_file; ///< path of the file from which the WRITE window was last loaded, or to which it was saved
    std::string read_text_file; ///< path of the file to which the READ window was last saved
    std::uint8_t edid_src = 1;  ///< the sink: 1 HDMI/DVI OUT, 2 HDMI/DVI IN, 3 VGA OUT

    bool read_ok = false; ///< the last read of a sink returned 256 bytes
    bool run_ok = false;  ///< the result of the last step of the automatic run
    std::int16_t diag_mode = diag::none;
    std::int16_t hex_type = 0;
    double sn_value = 0; ///< the serial number of the current run, 0 to 4294967295

    // kept in the settings file
    std::uint8_t eeprom_size_index = 0; ///< 0 to 3: 256, 512, 1024 or 2048 bytes
    std::uint8_t unused_byte_index = 0; ///< 0: 0x00, 1: 0xFF
    std::uint8_t checksum_4digits = 0;  ///< 1: the lower four digits only
};

} // namespace desk
