#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace desk {

/// The value that the last byte of a block needs, from the sum of the bytes before it: 256 minus the sum's last two
/// hexadecimal digits (VESA E-EDID, section 3.11). Between 1 and 256.
/// Intended: a block whose bytes add up to a multiple of 256 needs 256, which is not a byte, and counts as wrong.
std::int32_t needed_checksum(std::int32_t sum);

/// The comparison of the last byte of a block with the value that it needs.
struct block_checksum {
    std::size_t block = 0;   ///< 0 or 1
    std::int32_t needed = 0; ///< 1 to 256
    bool correct = false;
};

/// Checks the block checksums of an EDID, byte by byte.
class checksum_rule {
public:
    /// The number of bytes taken so far.
    std::size_t count() const { return count_; }

    /// Compares the next byte, without taking it, with the value its block needs; nothing except at bytes 127 and 255.
    std::optional<block_checksum> compare(std::uint8_t byte) const;

    /// Adds the byte. Throws failure::overflow if the running sum no longer fits in 32 bits.
    void take(std::uint8_t byte);

private:
    std::size_t count_ = 0;
    std::int32_t running_ = 0; // the needed value itself at bytes 127 and 255
};

} // namespace desk
