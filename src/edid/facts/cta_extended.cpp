#include "edid/facts/cta_blocks.h"
#include "edid/facts/display_id.h"
#include "edid/facts/modes.h"
#include "edid/facts/vic_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace desk::facts {

namespace {

constexpr std::uint32_t oui_hdr10_plus = 0x90848B;
constexpr std::uint32_t oui_dolby = 0x00D046;

/// `data` in each of these begins after the extended tag.
void read_video_capability(const payload& data) {
    constexpr std::string_view clause = "CTA-861, 7.5.6";
    const auto scan = [&](unsigned shift) { return static_cast<scan_behavior>(data[0] >> shift & 3); };
    video_capability c;
    c.where = data.where();
    c.quantization_ycbcr_selectable = data.bit(0, 7);
    c.quantization_rgb_selectable = data.bit(0, 6);
    c.preferred_timing = scan(4);
    c.it_formats = scan(2);
    c.ce_formats = scan(0);
    if (data.empty())
        data.block.find(severity::error, data.offset() - 2, "The video capability data block is empty.", clause);
    else if (data.block.facts.cta.capability)
        data.block.find(severity::warning, data.offset() - 2, "There is a second video capability data block.", clause);
    else
        data.block.facts.cta.capability = c;
}

void read_colorimetry(const payload& data) {
    constexpr std::string_view clause = "CTA-861, 7.5.5";
    constexpr std::array<std::string_view, 16> names = {
        "xvYCC_601", "xvYCC_709", "sYCC_601", "opYCC_601", "opRGB",       "BT2020_cYCC", "BT2020_YCC", "BT2020_RGB",
        "",          "",          "",         "",          "default RGB", "sRGB",        "ICtCp",      "DCI-P3"};
    cta_facts& cta = data.block.facts.cta;
    if (data.size() < 2)
        data.block.find(severity::error, data.offset() - 2, "The colorimetry data block is shorter than 2 bytes.",
                        clause);
    if (cta.has_colorimetry) {
        data.block.find(severity::warning, data.offset() - 2, "There is a second colorimetry data block.", clause);
        return;
    }
    cta.has_colorimetry = true;
    if ((data[1] & 0x0E) != 0)
        data.block.find(severity::warning, data.offset(1), "Reserved bits of the colorimetry data block are set.",
                        clause);
    for (unsigned i = 0; i < names.size(); ++i)
        if ((data.word(0) >> i & 1) != 0 && !names[i].empty()) cta.colorimetry.push_back(names[i]);
}

/// Luminance in cd/m2 of a code, 0 being not stated.
std::optional<double> luminance_of(std::uint8_t code) {
    if (code == 0) return std::nullopt;
    return 50 * std::exp2(code / 32.0);
}

void read_hdr_static(const payload& data) {
    constexpr std::string_view clause = "CTA-861, 7.5.13";
    constexpr std::array<std::string_view, 4> names = {"SDR", "HDR", "PQ", "HLG"};
    if (data.size() < 2)
        data.block.find(severity::error, data.offset() - 2, "The HDR static metadata data block is too short.", clause);
    if (data.block.facts.cta.hdr) {
        data.block.find(severity::warning, data.offset() - 2, "There is a second HDR static metadata data block.",
                        clause);
        return;
    }
    hdr_static_metadata hdr;
    hdr.where = data.where();
    for (unsigned i = 0; i < names.size(); ++i)
        if (data.bit(0, i)) hdr.eotfs.push_back(names[i]);
    if ((data[0] & 0xF0) != 0)
        data.block.find(severity::warning, data.offset(), "Reserved transfer functions are set.", clause);
    hdr.static_metadata_type_1 = data.bit(1, 0);
    hdr.max_nits = luminance_of(data[2]);
    hdr.max_average_nits = luminance_of(data[3]);
    if (hdr.max_nits && data.size() > 4) hdr.min_nits = *hdr.max_nits * std::pow(data[4] / 255.0, 2) / 100;
    data.block.facts.cta.hdr = std::move(hdr);
}

void read_hdr_dynamic(const payload& data) {
    for (std::size_t i = 0; i + 2 < data.size();) {
        data.block.facts.cta.hdr_dynamic_types.push_back(static_cast<std::uint16_t>(data.word(i + 1)));
        i += data[i] + 1U;
        if (i > data.size())
            data.block.find(severity::error, data.offset(), "An HDR dynamic metadata type goes beyond its data block.",
                            "CTA-861, 7.5.14");
    }
}

void read_ycbcr420_video(const payload& data) {
    for (std::size_t i = 0; i < data.size(); ++i) {
        video_code v;
        v.where = data.at(i, 1);
        v.native = data[i] >= 129 && data[i] <= 192;
        v.vic = v.native ? static_cast<std::uint8_t>(data[i] & 0x7F) : data[i];
        v.ycbcr420 = true;
        v.ycbcr420_only = true;
        if (timing_of_vic(v.vic) == nullptr)
            data.block.find(severity::warning, data.offset(i),
                            "The video identification code " + std::to_string(data[i]) + " is reserved.",
                            "CTA-861, 7.5.10");
        add_vic_mode(data.block, v.where, mode_source::ycbcr420_data_block, v.vic, v.native);
        data.block.facts.cta.video.push_back(v);
    }
}

/// A bit for each short video descriptor; an empty map means all of them.
void read_ycbcr420_map(const payload& data) {
    std::size_t index = 0;
    for (video_code& v : data.block.facts.cta.video) {
        if (v.ycbcr420_only) continue;
        if (data.empty() || data.bit(index / 8, static_cast<unsigned>(index % 8))) v.ycbcr420 = true;
        ++index;
    }
    for (; index < data.size() * 8; ++index)
        if (data.bit(index / 8, static_cast<unsigned>(index % 8))) {
            data.block.find(severity::warning, data.offset(index / 8),
                            "The YCbCr 4:2:0 capability map has more bits than there are video descriptors.",
                            "CTA-861, 7.5.11");
            return;
        }
}

void read_vendor_video(const payload& data) {
    const std::uint32_t oui = data.three_bytes(0);
    cta_facts& cta = data.block.facts.cta;
    if (oui == oui_hdr10_plus) cta.hdr10_plus = true;
    if (oui == oui_dolby && data.size() > 3) cta.dolby_vision = static_cast<std::uint8_t>((data[3] >> 5) + 1);
    keep_vendor_block(data, "video");
}

/// The number of extension blocks that replaces the one of the base block.
void read_override(const payload& data) {
    if (data.block.number() != 1 || data[0] == 0)
        data.block.find(severity::warning, data.offset(), "The override of the number of extension blocks is invalid.",
                        "HDMI 2.1, 10.3.6");
}

} // namespace

void read_extended_block(const payload& data) {
    if (data.empty()) {
        data.block.find(severity::error, data.offset() - 1, "An extended data block has no tag.", "CTA-861, 7.5");
        return;
    }
    const payload rest = data.from(1);
    switch (data[0]) {
    case 0x00:
        return read_video_capability(rest);
    case 0x01:
        return read_vendor_video(rest);
    case 0x05:
        return read_colorimetry(rest);
    case 0x06:
        return read_hdr_static(rest);
    case 0x07:
        return read_hdr_dynamic(rest);
    case 0x0D:
        for (std::size_t i = 0; i < rest.size(); ++i)
            data.block.facts.cta.preferred_video.push_back(rest[i]);
        return;
    case 0x0E:
        return read_ycbcr420_video(rest);
    case 0x0F:
        return read_ycbcr420_map(rest);
    case 0x11:
        return keep_vendor_block(rest, "audio");
    case 0x22:
        // a byte of flags, and a detailed timing of DisplayID
        return read_long_timing(rest.from(1), 1);
    case 0x78:
        return read_override(rest);
    case 0x79:
        // tag and two reserved bytes are in the place of the identifier
        return read_hdmi_forum_block(data);
    default:
        data.block.keep_unknown(data.offset(), data.size(), "extended data block");
    }
}

void check_data_blocks(display_facts& facts) {
    const cta_facts& cta = facts.cta;
    if (cta.blocks.empty()) return;
    const std::uint16_t block = cta.blocks.front().block;
    const auto find = [&](severity level, std::string text, std::string_view clause) {
        facts.findings.push_back({level, block, 0, std::move(text), clause});
    };
    if (cta.blocks.front().revision < 3) return;
    const auto is_vga = [](const video_mode& m) {
        return m.width == 640 && m.height == 480 && std::lround(m.refresh_hz) == 60;
    };
    if (std::none_of(facts.modes.begin(), facts.modes.end(), is_vga))
        find(severity::warning, "640x480 at 60 Hz, which every display must support, is not listed.", "CTA-861, 4.1");
    if (!cta.audio.empty() && !cta.speakers)
        find(severity::warning, "There are audio formats, but no speaker allocation data block.", "CTA-861, 7.5.3");
    if (!cta.audio.empty() && !cta.blocks.front().basic_audio)
        find(severity::warning, "There are audio formats, but basic audio is not supported.", "CTA-861, 7.5.2");
    if (cta.hdmi_forum && !cta.hdmi)
        find(severity::error, "There is an HDMI Forum block, but no HDMI vendor block.", "HDMI 2.1, 10.3.2");
    if (cta.hdr && !cta.has_colorimetry)
        find(severity::warning, "There are HDR metadata, but no colorimetry data block.", "CTA-861, 7.5.13");
    if (cta.hdmi && cta.video.empty())
        find(severity::warning, "The video data block that HDMI requires is missing.", "HDMI 1.4, 8.3.4");
}

} // namespace desk::facts
