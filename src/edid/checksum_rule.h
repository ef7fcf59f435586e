#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace desk {

/// The value that the last byte of a block must have for a sum of the bytes before it: 256 minus the sum's last two
/// hexadecimal digits (VESA E-EDID, section 3.11). It lies between 1 and 256.
/// The desk behaves so: a block whose bytes add up to a multiple of 256 needs 256, which no byte can have, and counts
/// as wrong.
std::int32_t needed_checksum(std::int32_t sum);

/// What the last byte of a block was compared with.
struct block_checksum {
    std::size_t block = 0;   ///< 0 or 1
    std::int32_t needed = 0; ///< 1 to 256
    bool correct = false;
};

/// The block checksum rule over the bytes of an EDID as they come in, one after another.
class checksum_rule {
public:
    /// The bytes taken so far.
    std::size_t count() const { return count_; }

    /// Looks at the next byte without taking it: at bytes 127 and 255 it gives what the block needs.
    std::optional<block_checksum> compare(std::uint8_t byte) const;

    /// Takes the byte in. Throws failure::overflow where the running sum no longer fits into 32 bits.
    void take(std::uint8_t byte);

private:
    std::size_t count_ = 0;
    std::int32_t running_ = 0; // at bytes 127 and 255 the needed value itself
};

} // namespace desk
