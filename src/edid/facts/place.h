#pragma once

#include <cstdint>
#include <string_view>

namespace desk::facts {

/// A run of bytes in one block.
struct place {
    std::uint16_t block = 0;
    std::uint8_t offset = 0; ///< in the block
    std::uint8_t length = 0;
};

/// What bytes belong to.
enum class part : std::uint8_t {
    header,
    product,
    version,
    input,
    features, ///< size, gamma, power management, colour encodings
    color,
    established,
    standard,
    detailed,
    text, ///< name, serial number, string
    range_limits,
    other_descriptor,
    extension_header,
    video,
    audio,
    speakers,
    vendor,
    capability, ///< video capability, colorimetry, preferences
    hdr,
    ycbcr420,
    display_id,
    padding,
    checksum,
    unknown,
};

/// Bytes with their name. Together these cover every byte of the blocks.
struct named_bytes {
    place where;
    part what = part::unknown;
    std::string_view name; ///< static
};

} // namespace desk::facts
