#pragma once

#include "edid/format/buffer.h"
#include "translate/decode/data_block_table.h"
#include "translate/decode/descriptor.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace desk {

/// The classes of the 18-byte descriptors. The class of a monitor descriptor is its tag.
namespace descriptor_class {

using descriptor_code::ascii_string;
using descriptor_code::monitor_name;
using descriptor_code::range_limits;
using descriptor_code::serial_number;
using descriptor_code::unknown;
inline constexpr std::uint8_t detail_timing = 0xE0;
inline constexpr std::uint8_t standard_timings = 0xFA;

} // namespace descriptor_class

/// The number of 18-byte descriptors in block 0.
inline constexpr std::size_t descriptors_of_block_0 = 4;

/// A row of `descriptor_map`.
struct descriptor_row {
    std::uint8_t position = 0; ///< in its block, from 1; decode_detail lowers it
    std::uint8_t kind = 0;     ///< a descriptor_class
};

/// The addresses of the descriptors and data blocks of an EDID. The tables describe one block at a time; a call keeps
/// what it does not write.
struct translation_tables {
    std::array<descriptor_row, 7> descriptor_map{};
    std::uint8_t descriptor_start = 0; ///< address of the first descriptor of the block last arranged
    /// The address of the header byte for each of `data_block_rows`; 0: there is none.
    std::array<std::uint8_t, data_block_rows.size()> data_block_addr{};
    std::uint8_t cea_dtd_offset = 0; ///< byte 130: start of the detailed timings in block 1
    bool is_cea_block1 = false;      ///< block 1 is a CEA 861 block

    /// Fills `descriptor_map` and `descriptor_start` for block 0, or for block 1 if `block` is not 0.
    /// Throws failure::overflow if byte 130 is 128 or more.
    void arrange_descriptor(const edid_buffer& trans_buff, std::uint8_t block);

    /// Fills `cea_dtd_offset` and `data_block_addr` (CEA-861-D, section 7.5) with the last block of each kind.
    /// Throws failure::subscript_out_of_range if byte 130 points beyond the EDID.
    void arrange_data_block(const edid_buffer& trans_buff);

    /// Whether `cea_dtd_offset` leaves room for data blocks before the detailed timings.
    bool has_data_blocks() const { return cea_dtd_offset != 0 && cea_dtd_offset != 4; }

    /// The row of descriptor number `count`, from 1, of a class in the first `rows` rows; nullptr if there is none.
    descriptor_row* find_descriptor(std::uint8_t kind, int count, std::size_t rows);

    /// The address of a monitor descriptor's tag.
    std::uint8_t tag_address(const descriptor_row& row) const;
};

} // namespace desk
