#include "edid/facts/cta_blocks.h"
#include "edid/facts/modes.h"

#include <array>
#include <string>

namespace desk::facts {

namespace {

constexpr std::uint32_t oui_hdmi = 0x000C03;
constexpr std::uint32_t oui_hdmi_forum = 0xC45DD8;
constexpr unsigned mhz_of_tmds_step = 5;

std::string_view vendor_of(std::uint32_t oui) {
    struct vendor {
        std::uint32_t oui;
        std::string_view name;
    };
    constexpr std::array<vendor, 8> vendors = {{{0x000C03, "HDMI"},
                                                {0xC45DD8, "HDMI Forum"},
                                                {0x00D046, "Dolby"},
                                                {0x90848B, "HDR10+"},
                                                {0x00001A, "AMD"},
                                                {0x00044B, "NVIDIA"},
                                                {0xCA125C, "Microsoft"},
                                                {0x3A0292, "VESA"}}};
    for (const vendor& v : vendors)
        if (v.oui == oui) return v.name;
    return "";
}

/// Milliseconds; nothing if the latency is not known or there is no such signal.
std::optional<std::uint16_t> latency_of(std::uint8_t code) {
    constexpr std::uint8_t unknown = 0;
    constexpr std::uint8_t highest = 251;
    if (code == unknown || code > highest) return std::nullopt;
    return static_cast<std::uint16_t>((code - 1) * 2);
}

void check_address(const payload& data, const hdmi_block& hdmi) {
    constexpr std::string_view clause = "HDMI 1.4, 8.7";
    bool ended = false;
    bool gap = false;
    for (const std::uint8_t part_of_address : *hdmi.address) {
        gap = gap || (ended && part_of_address != 0);
        ended = ended || part_of_address == 0;
    }
    if (gap)
        data.block.find(severity::warning, data.offset(3),
                        "The physical address " + hdmi.address_text() + " has a zero before a later part.", clause);
    else if (hdmi.address->front() == 0)
        data.block.find(severity::note, data.offset(3), "The physical address 0.0.0.0 is that of a root device.",
                        clause);
}

void read_formats(const payload& data, std::size_t i, hdmi_block& hdmi) {
    hdmi.stereo_3d = data.bit(i, 7);
    const std::size_t count = data[i + 1] >> 5;
    for (std::size_t n = 0; n < count && i + 2 + n < data.size(); ++n) {
        const std::uint8_t vic = data[i + 2 + n];
        hdmi.hdmi_vics.push_back(vic);
        if (vic == 0 || vic > 4)
            data.block.find(severity::warning, data.offset(i + 2 + n),
                            "The HDMI video code " + std::to_string(vic) + " is reserved.", "HDMI 1.4, 8.3.2");
        add_hdmi_vic_mode(data.block, data.at(i + 2 + n, 1), mode_source::hdmi_vic, vic);
    }
    if (i + 2 + count + (data[i + 1] & 31) > data.size())
        data.block.find(severity::error, data.offset(i + 1),
                        "The HDMI formats and 3D structures are longer than their block.", "HDMI 1.4, 8.3.2");
}

/// What follows the flags in byte 7: latencies, content types, formats.
void read_optional_fields(const payload& data, hdmi_block& hdmi) {
    constexpr std::array<std::string_view, 4> contents = {"graphics", "photo", "cinema", "game"};
    for (unsigned i = 0; i < contents.size(); ++i)
        if (data.bit(7, i)) hdmi.content_types.push_back(contents[i]);
    std::size_t i = 8;
    if (data.bit(7, 7)) {
        hdmi.video_latency_ms = latency_of(data[i]);
        hdmi.audio_latency_ms = latency_of(data[i + 1]);
        i += 2;
    }
    if (data.bit(7, 6)) {
        if (!data.bit(7, 7))
            data.block.find(severity::warning, data.offset(7), "There are interlaced latencies, but no others.",
                            "HDMI 1.4, 8.3.2");
        hdmi.interlaced_video_latency_ms = latency_of(data[i]);
        hdmi.interlaced_audio_latency_ms = latency_of(data[i + 1]);
        i += 2;
    }
    if (data.bit(7, 5)) read_formats(data, i, hdmi);
}

struct fixed_rate_link {
    std::uint8_t lanes, gbps;
};

/// By code 0 to 6.
fixed_rate_link link_of(const payload& data, std::size_t i) {
    constexpr std::array<fixed_rate_link, 7> links = {{{0, 0}, {3, 3}, {3, 6}, {4, 6}, {4, 8}, {4, 10}, {4, 12}}};
    const std::size_t code = data[i] >> 4;
    if (code < links.size()) return links[code];
    data.block.find(severity::warning, data.offset(i), "The rate of the fixed rate link is a reserved code.",
                    "HDMI 2.1, 10.3.2");
    return {};
}

void read_compression(const payload& data, hdmi_forum_block& forum) {
    struct slices {
        std::uint8_t count;
        std::uint16_t mhz;
    };
    constexpr std::array<slices, 8> by_code = {
        {{0, 0}, {1, 340}, {2, 340}, {4, 340}, {8, 340}, {8, 400}, {12, 400}, {16, 400}}};
    forum.dsc = data.bit(10, 7);
    forum.dsc_native_420 = data.bit(10, 6);
    forum.dsc_16_bit = data.bit(10, 2);
    forum.dsc_12_bit = data.bit(10, 1);
    forum.dsc_10_bit = data.bit(10, 0);
    const slices most = by_code[data[11] & 7];
    forum.dsc_max_slices = most.count;
    forum.dsc_slice_mhz = most.mhz;
    const fixed_rate_link link = link_of(data, 11);
    forum.dsc_frl_lanes = link.lanes;
    forum.dsc_frl_gbps = link.gbps;
    if (forum.dsc) forum.dsc_chunk_bytes = 1024U * ((data[12] & 63U) + 1);
}

void read_refresh_range(const payload& data, hdmi_forum_block& forum) {
    forum.vrr_min_hz = data[8] & 63;
    forum.vrr_max_hz = static_cast<std::uint16_t>((data[8] & 0xC0) << 2 | data[9]);
    if (forum.vrr_max_hz != 0 && forum.vrr_max_hz <= forum.vrr_min_hz)
        data.block.find(severity::warning, data.offset(8),
                        "The variable refresh rate's minimum is not below its maximum.", "HDMI 2.1, 10.3.2");
}

} // namespace

std::string hdmi_block::address_text() const {
    std::string text;
    if (!address) return text;
    for (const std::uint8_t digit : *address) {
        if (!text.empty()) text.push_back('.');
        text.push_back("0123456789abcdef"[digit & 15]);
    }
    return text;
}

void read_hdmi_block(const payload& data) {
    constexpr std::string_view clause = "HDMI 1.4, 8.3.2";
    hdmi_block hdmi;
    hdmi.where = data.where();
    if (data.size() < 5) {
        data.block.find(severity::error, data.offset() - 1, "The HDMI vendor block is shorter than 5 bytes.", clause);
    } else {
        hdmi.address = {static_cast<std::uint8_t>(data[3] >> 4), static_cast<std::uint8_t>(data[3] & 15),
                        static_cast<std::uint8_t>(data[4] >> 4), static_cast<std::uint8_t>(data[4] & 15)};
        check_address(data, hdmi);
    }
    hdmi.supports_ai = data.bit(5, 7);
    hdmi.deep_color_48 = data.bit(5, 6);
    hdmi.deep_color_36 = data.bit(5, 5);
    hdmi.deep_color_30 = data.bit(5, 4);
    hdmi.deep_color_ycbcr444 = data.bit(5, 3);
    hdmi.dual_link_dvi = data.bit(5, 0);
    hdmi.max_tmds_mhz = static_cast<std::uint16_t>(data[6] * mhz_of_tmds_step);
    read_optional_fields(data, hdmi);
    if (data.block.facts.cta.hdmi)
        data.block.find(severity::warning, data.offset() - 1, "There is a second HDMI vendor block.", clause);
    else
        data.block.facts.cta.hdmi = std::move(hdmi);
}

void read_hdmi_forum_block(const payload& data) {
    constexpr std::string_view clause = "HDMI 2.1, 10.3.2";
    if (data.size() < 7)
        data.block.find(severity::error, data.offset() - 1, "The HDMI Forum block is shorter than 7 bytes.", clause);
    hdmi_forum_block forum;
    forum.where = data.where();
    forum.version = data[3];
    forum.max_tmds_mhz = static_cast<std::uint16_t>(data[4] * mhz_of_tmds_step);
    forum.scdc = data.bit(5, 7);
    forum.read_request = data.bit(5, 6);
    forum.scrambling_up_to_340 = data.bit(5, 3);
    const fixed_rate_link link = link_of(data, 6);
    forum.frl_lanes = link.lanes;
    forum.frl_gbps = link.gbps;
    forum.uhd_vic = data.bit(6, 3);
    forum.deep_color_420_48 = data.bit(6, 2);
    forum.deep_color_420_36 = data.bit(6, 1);
    forum.deep_color_420_30 = data.bit(6, 0);
    forum.qms = data.bit(7, 6);
    forum.cinema_vrr = data.bit(7, 4);
    forum.fast_vactive = data.bit(7, 2);
    forum.allm = data.bit(7, 1);
    read_refresh_range(data, forum);
    read_compression(data, forum);
    if (forum.version != 1)
        data.block.find(severity::warning, data.offset(3), "The version of the HDMI Forum block is not 1.", clause);
    if (forum.max_tmds_mhz != 0 && (forum.max_tmds_mhz <= 340 || forum.max_tmds_mhz > 600))
        data.block.find(severity::warning, data.offset(4),
                        "The TMDS character rate is neither 0 nor above 340 MHz and up to 600 MHz.", clause);
    if (data.block.facts.cta.hdmi_forum)
        data.block.find(severity::warning, data.offset() - 1, "There is a second HDMI Forum block.", clause);
    else
        data.block.facts.cta.hdmi_forum = forum;
}

void keep_vendor_block(const payload& data, std::string_view kind) {
    vendor_block kept;
    kept.where = data.where();
    kept.oui = data.three_bytes(0);
    kept.vendor = vendor_of(kept.oui);
    kept.kind = kind;
    for (std::size_t i = 3; i < data.size(); ++i)
        kept.bytes.push_back(data[i]);
    data.block.facts.cta.vendors.push_back(std::move(kept));
}

void read_vendor_block(const payload& data) {
    if (data.size() < 3) {
        data.block.find(severity::error, data.offset() - 1, "A vendor data block has no identifier of three bytes.",
                        "CTA-861, 7.5.4");
        data.block.keep_unknown(data.offset(), data.size(), "vendor data block");
        return;
    }
    const std::uint32_t oui = data.three_bytes(0);
    if (oui == oui_hdmi)
        read_hdmi_block(data);
    else if (oui == oui_hdmi_forum)
        read_hdmi_forum_block(data);
    else
        keep_vendor_block(data, "general");
}

} // namespace desk::facts
