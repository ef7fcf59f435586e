#include "translate/decode/translation_tables.h"

#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "runtime/subscript.h"
#include "runtime/text.h"

#include <algorithm>

namespace desk {

namespace {

constexpr int descriptor_size = 18;
constexpr std::size_t descriptors_of_block_1 = 6;
constexpr int last_start_in_block_1 = 236;
constexpr std::uint8_t start_in_block_0 = 54;
constexpr std::size_t offset_of_detail_timings = 130;

std::uint8_t class_of(const edid_buffer& trans_buff, int a) {
    if (element(trans_buff, a) != 0 || element(trans_buff, a + 1) != 0) return descriptor_class::detail_timing;
    switch (const std::uint8_t tag = element(trans_buff, a + 3)) {
    case descriptor_class::serial_number:
    case descriptor_class::ascii_string:
    case descriptor_class::range_limits:
    case descriptor_class::monitor_name:
    case descriptor_class::standard_timings:
        return tag;
    default:
        return descriptor_class::unknown;
    }
}

std::uint8_t position_of(std::size_t row) { return static_cast<std::uint8_t>(row + 1); }

/// The index in `data_block_rows` of the data block at address `a`.
std::size_t kind_of(const edid_buffer& trans_buff, int a) {
    const int tag = element(trans_buff, a) >> 5;
    const int extended_tag = tag == data_block_row::extended ? element(trans_buff, a + 1) : data_block_row::any;
    const auto fits = [](int wanted, int found) { return wanted == data_block_row::any || wanted == found; };
    const auto row = std::find_if(data_block_rows.begin(), data_block_rows.end(), [&](const data_block_row& r) {
        return fits(r.tag, tag) && fits(r.extended_tag, extended_tag);
    });
    return static_cast<std::size_t>(row - data_block_rows.begin());
}

} // namespace

void translation_tables::arrange_descriptor(const edid_buffer& trans_buff, std::uint8_t block) {
    const auto address_of = [this](std::size_t row) {
        return descriptor_start + static_cast<int>(row) * descriptor_size;
    };
    if (block == 0) {
        descriptor_start = start_in_block_0;
        for (std::size_t i = 0; i < descriptors_of_block_0; ++i)
            descriptor_map.at(i) = {position_of(i), class_of(trans_buff, address_of(i))};
        descriptor_map.at(descriptors_of_block_0) = {position_of(descriptors_of_block_0), descriptor_class::unknown};
        return;
    }
    const std::uint8_t d = trans_buff[offset_of_detail_timings];
    if (d != 0) {
        descriptor_start =
            while_doing([&] { return "Looking for the detailed timings of block 1 at its offset " + number_text(d); },
                        [&] { return to_byte(d + 128); });
    }
    for (std::size_t i = 0; i < descriptor_map.size(); ++i) {
        const bool real = d != 0 && i < descriptors_of_block_1 && address_of(i) <= last_start_in_block_1;
        descriptor_map.at(i) = {position_of(i), real ? class_of(trans_buff, address_of(i)) : descriptor_class::unknown};
    }
}

void translation_tables::arrange_data_block(const edid_buffer& trans_buff) {
    cea_dtd_offset = trans_buff[offset_of_detail_timings];
    // Intended: the addresses of the previous EDID stay then.
    if (!has_data_blocks()) return;
    data_block_addr.fill(0);
    const int limit = cea_dtd_offset - 1;
    while_doing([&] { return "Looking for the data blocks before offset " + number_text(cea_dtd_offset); },
                [&] {
                    for (int p = 4; p <= limit; p += (element(trans_buff, p + 128) & 0x1F) + 1) {
                        const std::size_t kind = kind_of(trans_buff, p + 128);
                        data_block_addr.at(kind) = to_byte(p + 128);
                    }
                });
}

descriptor_row* translation_tables::find_descriptor(std::uint8_t kind, int count, std::size_t rows) {
    int found = 0;
    const auto last = descriptor_map.begin() + static_cast<std::ptrdiff_t>(rows);
    const auto row = std::find_if(descriptor_map.begin(), last,
                                  [&](const descriptor_row& r) { return r.kind == kind && ++found == count; });
    return row == last ? nullptr : &*row;
}

std::uint8_t translation_tables::tag_address(const descriptor_row& row) const {
    return to_byte(descriptor_start + (row.position - 1) * descriptor_size + 3);
}

} // namespace desk
