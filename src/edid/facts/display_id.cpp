#include "edid/facts/display_id.h"
#include "edid/facts/cta_blocks.h"
#include "edid/facts/modes.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

#include <string>

namespace desk::facts {

namespace {

constexpr std::string_view clause_of_display_id = "VESA DisplayID 2.0, 3";
constexpr std::size_t section_begin = 1;
constexpr std::size_t section_header = 4;
constexpr std::size_t last_of_section = 126; ///< the latest place of the section's checksum

/// Identification, the same in both versions but for the vendor: three letters or an IEEE identifier.
void read_product_id(const payload& data, display_id_section& section) {
    constexpr std::size_t fixed_size = 12;
    if (section.version >= 0x20) {
        section.vendor = hex2(data[0]) + "-" + hex2(data[1]) + "-" + hex2(data[2]);
    } else {
        for (std::size_t i = 0; i < 3; ++i)
            append_utf8(section.vendor, character_of(data[i]));
    }
    section.product_code = static_cast<std::uint16_t>(data.word(3));
    const std::uint32_t serial = data.word(5) | data.word(7) << 16;
    if (serial != 0) section.serial_number = serial;
    if (data[9] != 0 && data[9] != 0xFF) section.week = data[9];
    section.year = 2000 + data[10];
    const std::size_t length = data[11];
    if (fixed_size + length > data.size())
        data.block.find(severity::error, data.offset(11), "The product's name goes beyond its data block.",
                        clause_of_display_id);
    std::string name;
    for (std::size_t i = 0; i < length && fixed_size + i < data.size(); ++i)
        name.push_back(static_cast<char>(data[fixed_size + i]));
    section.product_name = text_from_bytes(name);
}

void read_parameters(const payload& data, std::uint8_t revision, display_id_section& section) {
    // in tenths of a millimetre; whole ones if the block says so
    const double unit_mm = section.version >= 0x20 && (revision & 0x80) != 0 ? 1.0 : 0.1;
    section.width_mm = data.word(0) * unit_mm;
    section.height_mm = data.word(2) * unit_mm;
    section.native_width = data.word(4);
    section.native_height = data.word(6);
}

void read_display_id_data_block(std::uint8_t tag, std::uint8_t revision, const payload& data,
                                display_id_section& section) {
    if (read_display_id_timings(tag, revision, data)) return;
    switch (tag) {
    case 0x00:
    case 0x20:
        return read_product_id(data, section);
    case 0x01:
    case 0x21:
        return read_parameters(data, revision, section);
    case 0x81:
        return read_data_blocks(data.block, data.offset(), data.offset() + data.size());
    default:
        data.block.keep_unknown(data.offset() - 3, data.size() + 3, "DisplayID data block");
    }
}

/// A tag 0 without a size is filling, whatever the version.
bool is_filling(const block_reader& block, std::size_t offset) { return block[offset] == 0 && block[offset + 2] == 0; }

void read_section(const block_reader& block, std::size_t end, display_id_section& section) {
    constexpr std::size_t header = 3;
    std::size_t offset = section_begin + section_header;
    while (offset + header <= end && !is_filling(block, offset)) {
        std::size_t length = block[offset + 2];
        if (offset + header + length > end) {
            block.find(severity::error, offset,
                       "A DisplayID data block of " + std::to_string(length) + " bytes goes beyond its section.",
                       clause_of_display_id);
            length = end - offset - header;
        }
        const std::uint8_t tag = block[offset];
        if (tag == 0x81)
            block.name(offset, header, part::display_id, "DisplayID data block");
        else
            block.name(offset, header + length, part::display_id, "DisplayID data block");
        read_display_id_data_block(tag, block[offset + 1], payload(block, offset + header, length), section);
        offset += header + length;
    }
    if (offset < end) block.name(offset, end - offset, part::padding, "Padding");
}

void check_sum(const block_reader& block, std::size_t end) {
    unsigned sum = 0;
    for (std::size_t i = section_begin; i <= end; ++i)
        sum += block[i];
    block.name(end, 1, part::checksum, "Checksum of the section");
    if ((sum & 255) != 0)
        block.find(severity::error, end, "The checksum of the DisplayID section is wrong.", clause_of_display_id);
}

} // namespace

void read_display_id_block(const block_reader& block) {
    display_id_section section;
    section.block = block.number();
    section.version = block[section_begin];
    section.product_type = block[section_begin + 2];
    block.name(0, section_begin + section_header, part::extension_header, "DisplayID header");
    std::size_t end = section_begin + section_header + block[section_begin + 1];
    if (end > last_of_section) {
        block.find(severity::error, section_begin + 1, "The DisplayID section is longer than its block.",
                   clause_of_display_id);
        end = last_of_section;
    }
    const unsigned major = section.version >> 4;
    if (major < 1 || major > 2)
        block.find(severity::warning, section_begin, "The version of the DisplayID section is not known.",
                   clause_of_display_id);
    check_sum(block, end);
    read_section(block, end, section);
    block.facts.display_id.push_back(std::move(section));
}

void read_video_timing_block(const block_reader& block) {
    constexpr std::string_view clause = "VESA VTB-EXT 1, 2";
    constexpr std::size_t header = 5;
    const std::size_t detailed = block[2];
    const std::size_t cvt = block[3];
    const std::size_t standard = block[4];
    block.name(0, header, part::extension_header, "Video timing block header");
    if (header + detailed * 18 + cvt * 3 + standard * 2 > edid_block_size - 1)
        block.find(severity::error, 2, "The timings of a video timing block are longer than the block.", clause);
    std::size_t offset = header;
    const auto read_all = [&](std::size_t count, std::size_t size, auto read) {
        for (std::size_t i = 0; i < count && offset + size < edid_block_size; ++i, offset += size)
            read(offset);
    };
    read_all(detailed, 18, [&](std::size_t at) { read_detailed_timing(block, at, false); });
    read_all(cvt, 3, [&](std::size_t at) {
        block.name(at, 3, part::standard, "CVT code");
        read_cvt_code(block, at);
    });
    read_all(standard, 2, [&](std::size_t at) {
        block.name(at, 2, part::standard, "Standard timing");
        read_standard_code(block, at);
    });
}

} // namespace desk::facts
