#include "edid/facts/cta_blocks.h"
#include "edid/facts/descriptors.h"
#include "edid/facts/modes.h"
#include "edid/facts/vic_table.h"

#include <algorithm>
#include <array>
#include <string>

namespace desk::facts {

namespace {

constexpr std::string_view clause_of_cta_block = "CTA-861, 7.5";
constexpr std::size_t first_data_block = 4;
constexpr std::size_t place_of_checksum = 127;
constexpr std::size_t size_of_timing = 18;

/// The tags of data blocks.
constexpr unsigned audio_tag = 1;
constexpr unsigned video_tag = 2;
constexpr unsigned vendor_tag = 3;
constexpr unsigned speaker_tag = 4;
constexpr unsigned transfer_tag = 5;
constexpr unsigned extended_tag = 7;

struct kind_of_block {
    part what;
    std::string_view name;
};

kind_of_block kind_of(unsigned tag, unsigned extended) {
    constexpr std::array<kind_of_block, 8> kinds = {{{part::unknown, "Reserved data block"},
                                                     {part::audio, "Audio data block"},
                                                     {part::video, "Video data block"},
                                                     {part::vendor, "Vendor data block"},
                                                     {part::speakers, "Speaker allocation data block"},
                                                     {part::unknown, "VESA display transfer data block"},
                                                     {part::unknown, "Reserved data block"},
                                                     {part::unknown, "Extended data block"}}};
    if (tag != extended_tag) return kinds[tag];
    switch (extended) {
    case 0x00:
        return {part::capability, "Video capability data block"};
    case 0x01:
        return {part::vendor, "Vendor video data block"};
    case 0x05:
        return {part::capability, "Colorimetry data block"};
    case 0x06:
        return {part::hdr, "HDR static metadata data block"};
    case 0x07:
        return {part::hdr, "HDR dynamic metadata data block"};
    case 0x0D:
        return {part::capability, "Video format preference data block"};
    case 0x0E:
        return {part::ycbcr420, "YCbCr 4:2:0 video data block"};
    case 0x0F:
        return {part::ycbcr420, "YCbCr 4:2:0 capability map data block"};
    case 0x11:
        return {part::vendor, "Vendor audio data block"};
    case 0x78:
        return {part::vendor, "HDMI Forum EDID extension override data block"};
    case 0x79:
        return {part::vendor, "HDMI Forum sink capability data block"};
    default:
        return kinds[extended_tag];
    }
}

void read_data_block(unsigned tag, const payload& data) {
    switch (tag) {
    case audio_tag:
        return read_audio_block(data);
    case video_tag:
        return read_video_block(data);
    case vendor_tag:
        return read_vendor_block(data);
    case speaker_tag:
        return read_speaker_block(data);
    case extended_tag:
        return read_extended_block(data);
    default:
        data.block.keep_unknown(data.offset() - 1, data.size() + 1,
                                tag == transfer_tag ? "VESA display transfer data block" : "reserved data block");
        if (tag != transfer_tag)
            data.block.find(severity::warning, data.offset() - 1, "A data block has a reserved tag.",
                            clause_of_cta_block);
    }
}

/// Reads the detailed timings, and the display descriptors among them, from `begin` on; returns where they end.
std::size_t read_timings(const block_reader& block, std::size_t begin) {
    std::size_t offset = begin;
    for (; offset + size_of_timing <= place_of_checksum; offset += size_of_timing) {
        if (block.word(offset) != 0)
            read_detailed_timing(block, offset, false);
        else if (is_display_descriptor(block, offset))
            read_display_descriptor(block, offset);
        else
            break;
    }
    return offset;
}

void check_padding(const block_reader& block, std::size_t begin) {
    if (begin >= place_of_checksum) return;
    block.name(begin, place_of_checksum - begin, part::padding, "Padding");
    for (std::size_t i = begin; i < place_of_checksum; ++i)
        if (block[i] != 0) {
            block.find(severity::warning, i, "The padding of a CTA-861 block is not 0.", clause_of_cta_block);
            return;
        }
}

void read_flags(const block_reader& block, cta_block& header) {
    header.underscans = block.bit(3, 7);
    header.basic_audio = block.bit(3, 6);
    header.ycbcr444 = block.bit(3, 5);
    header.ycbcr422 = block.bit(3, 4);
    header.native_timings = block[3] & 15;
}

/// The native timings are the first ones of the EDID.
void mark_native_timings(const block_reader& block, const cta_block& header) {
    std::size_t left = header.native_timings;
    for (video_mode& mode : block.facts.modes)
        if (left > 0 && mode.source == mode_source::detailed) {
            mode.native = true;
            --left;
        }
    if (left > 0)
        block.find(severity::warning, 3,
                   "There are fewer detailed timings than the " + std::to_string(header.native_timings) +
                       " that are native.",
                   clause_of_cta_block);
}

} // namespace

void read_data_blocks(const block_reader& block, std::size_t begin, std::size_t end) {
    while (begin < end) {
        const unsigned tag = block[begin] >> 5;
        std::size_t length = block[begin] & 31U;
        if (begin + 1 + length > end) {
            block.find(severity::error, begin,
                       "A data block of " + std::to_string(length) + " bytes goes beyond the " +
                           std::to_string(end - begin - 1) + " that are left.",
                       clause_of_cta_block);
            length = end - begin - 1;
        }
        const kind_of_block kind = kind_of(tag, length == 0 ? 0xFFU : block[begin + 1]);
        block.name(begin, length + 1, kind.what, kind.name);
        read_data_block(tag, payload(block, begin + 1, length));
        begin += length + 1;
    }
}

void read_cta_block(const block_reader& block) {
    cta_block header;
    header.block = block.number();
    header.revision = block[1];
    block.name(0, first_data_block, part::extension_header, "CTA-861 header");
    if (header.revision >= 2) read_flags(block, header);
    if (header.revision == 0 || header.revision > 3)
        block.find(severity::warning, 1, "There is no revision " + std::to_string(header.revision) + " of the block.",
                   clause_of_cta_block);
    block.facts.cta.blocks.push_back(header);
    const std::size_t timings = block[2];
    if (timings == 0) return check_padding(block, first_data_block);
    if (timings < first_data_block || timings > place_of_checksum) {
        block.find(severity::error, 2,
                   "The detailed timings can't begin at byte " + std::to_string(timings) + " of the block.",
                   clause_of_cta_block);
        return;
    }
    if (timings > first_data_block && header.revision < 3)
        block.find(severity::warning, 1, "Data blocks need revision 3.", clause_of_cta_block);
    read_data_blocks(block, first_data_block, timings);
    check_padding(block, read_timings(block, timings));
    mark_native_timings(block, header);
}

void read_video_block(const payload& data) {
    constexpr std::string_view clause = "CTA-861, 7.5.1";
    for (std::size_t i = 0; i < data.size(); ++i) {
        const std::uint8_t code = data[i];
        video_code v;
        v.where = data.at(i, 1);
        // 129 to 192: a native format of the codes 1 to 64
        v.native = code >= 129 && code <= 192;
        v.vic = v.native ? static_cast<std::uint8_t>(code & 0x7F) : code;
        if (timing_of_vic(v.vic) == nullptr)
            data.block.find(severity::warning, data.offset(i),
                            "The video identification code " + std::to_string(code) + " is reserved.", clause);
        const auto& known = data.block.facts.cta.video;
        if (std::any_of(known.begin(), known.end(), [&](const video_code& k) { return k.vic == v.vic; }))
            data.block.find(severity::warning, data.offset(i),
                            "The video identification code " + std::to_string(v.vic) + " is a duplicate.", clause);
        add_vic_mode(data.block, v.where, mode_source::video_data_block, v.vic, v.native);
        data.block.facts.cta.video.push_back(v);
    }
}

} // namespace desk::facts
