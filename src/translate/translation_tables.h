#pragma once

#include "edid/buffer.h"
#include "translate/decode/descriptor.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace desk {

/// The classes of the 18-byte descriptors. A monitor descriptor has its tag as its class.
namespace descriptor_class {

using descriptor_code::ascii_string;
using descriptor_code::monitor_name;
using descriptor_code::range_limits;
using descriptor_code::serial_number;
using descriptor_code::unknown;
inline constexpr std::uint8_t detail_timing = 0xE0;
inline constexpr std::uint8_t standard_timings = 0xFA;

} // namespace descriptor_class

/// So many 18-byte descriptors lie in block 0.
inline constexpr std::size_t descriptors_of_block_0 = 4;

/// The kinds of CEA 861 data blocks, as places in `data_block_addr`.
namespace data_block_kind {

inline constexpr std::size_t audio = 0;
inline constexpr std::size_t video = 1;
inline constexpr std::size_t vendor_specific = 2;
inline constexpr std::size_t speaker = 3;
inline constexpr std::size_t video_capability = 4;
inline constexpr std::size_t colorimetry = 5;
inline constexpr std::size_t unknown = 6;

} // namespace data_block_kind

/// A row of `descriptor_map`.
struct descriptor_row {
    std::uint8_t position = 0; ///< of the descriptor in its block, from 1; decode_detail lowers it
    std::uint8_t kind = 0;     ///< a descriptor_class
};

/// Where the descriptors and data blocks of an EDID lie. The tables describe one block at a time and keep what a call
/// does not write.
struct translation_tables {
    std::array<descriptor_row, 7> descriptor_map{};
    std::uint8_t descriptor_start = 0;             ///< address of the first descriptor of the block last arranged
    std::array<std::uint8_t, 7> data_block_addr{}; ///< address of each kind's header byte; 0: there is none
    std::uint8_t cea_dtd_offset = 0;               ///< byte 130: where the detailed timings begin in block 1
    bool is_cea_block1 = false;                    ///< block 1 is a CEA 861 block

    /// Fills `descriptor_map` and `descriptor_start` for block 0, or for block 1 where `block` is not 0.
    /// Throws failure::overflow where byte 130 is 128 or more.
    void arrange_descriptor(const edid_buffer& trans_buff, std::uint8_t block);

    /// Fills `cea_dtd_offset` and `data_block_addr` (CEA-861-D, section 7.5). The last block of a kind is the one kept.
    /// Throws failure::subscript_out_of_range where byte 130 leads it beyond the EDID.
    void arrange_data_block(const edid_buffer& trans_buff);

    /// Whether `cea_dtd_offset` leaves room for data blocks before the detailed timings.
    bool has_data_blocks() const { return cea_dtd_offset != 0 && cea_dtd_offset != 4; }

    /// The row that holds the descriptor number `count`, from 1, of a class among the first `rows` rows; none: nullptr.
    descriptor_row* find_descriptor(std::uint8_t kind, int count, std::size_t rows);

    /// Address of a monitor descriptor's tag.
    std::uint8_t tag_address(const descriptor_row& row) const;
};

} // namespace desk
