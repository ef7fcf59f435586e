#include "support/display_edid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace desk::facts {
namespace {

using test::display_edid;
using test::findings_about;
using test::list_of_findings;
using bytes = display_edid::bytes;

/// A data block with its header.
bytes data_block(int tag, bytes data) {
    data.insert(data.begin(), static_cast<std::uint8_t>(tag << 5 | static_cast<int>(data.size())));
    return data;
}
bytes extended_block(int tag, bytes data) {
    data.insert(data.begin(), static_cast<std::uint8_t>(tag));
    return data_block(7, data);
}
bytes joined(std::initializer_list<bytes> blocks) {
    bytes all;
    for (const bytes& b : blocks)
        all.insert(all.end(), b.begin(), b.end());
    return all;
}
display_facts facts_of(const bytes& data_blocks) { return display_edid().extend_cta(data_blocks, {}, 0x40).facts(); }

const bytes hdmi_head = {0x03, 0x0C, 0x00};
const bytes hdmi_forum_head = {0xD8, 0x5D, 0xC4};

TEST(cta_block, has_its_flags) {
    const display_facts f = display_edid().extend_cta({}, display_edid::full_hd(), 0xE2).facts();
    ASSERT_EQ(f.cta.blocks.size(), 1U);
    const cta_block& b = f.cta.blocks[0];
    EXPECT_EQ(b.block, 1);
    EXPECT_EQ(b.revision, 3);
    EXPECT_TRUE(b.underscans && b.basic_audio && b.ycbcr444);
    EXPECT_FALSE(b.ycbcr422);
    EXPECT_EQ(b.native_timings, 2);
    EXPECT_EQ(list_of_findings(f), "");
}

TEST(cta_block, marks_the_first_timings_as_native) {
    const display_facts f = display_edid().extend_cta({}, display_edid::full_hd(), 0x01).facts();
    ASSERT_EQ(f.detailed_timings.size(), 2U);
    EXPECT_EQ(f.detailed_timings[1].where.block, 1);
    EXPECT_EQ(f.detailed_timings[1].where.offset, 4);
    std::vector<bool> native;
    for (const video_mode& m : f.modes)
        if (m.source == mode_source::detailed) native.push_back(m.native);
    EXPECT_EQ(native, (std::vector<bool>{true, false}));
    EXPECT_EQ(findings_about(display_edid().extend_cta({}, {}, 0x02).facts(), "fewer detailed timings").size(), 1U);
}

TEST(cta_block, can_have_display_descriptors_among_its_timings) {
    const bytes serial = display_edid::text_descriptor(0xFF, "S1");
    const display_facts f = display_edid().extend_cta({}, joined({serial, display_edid::full_hd()})).facts();
    EXPECT_EQ(f.serial_text, "S1");
    EXPECT_EQ(f.detailed_timings.size(), 2U);
}

TEST(video_data_block, has_codes_with_their_native_bit) {
    const display_facts f = facts_of(data_block(2, {16, 0x84, 0xC0, 65, 127, 193, 219}));
    struct expected {
        int vic;
        bool native;
    };
    const std::vector<expected> all = {{16, false},  {4, true},    {64, true},  {65, false},
                                       {127, false}, {193, false}, {219, false}};
    ASSERT_EQ(f.cta.video.size(), all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(f.cta.video[i].vic, all[i].vic) << i;
        EXPECT_EQ(f.cta.video[i].native, all[i].native) << i;
        EXPECT_EQ(f.cta.video[i].where.offset, 5 + i);
    }
    EXPECT_EQ(list_of_findings(f), "");
}

TEST(video_data_block, reports_reserved_and_duplicate_codes) {
    const display_facts f = facts_of(data_block(2, {0, 128, 220, 255, 16, 144}));
    EXPECT_EQ(findings_about(f, "is reserved").size(), 4U);
    ASSERT_EQ(findings_about(f, "code 16 is a duplicate").size(), 1U);
    EXPECT_EQ(findings_about(f, "code 16 is a duplicate")[0].offset, 10);
}

TEST(audio_data_block, has_every_format_of_the_standard) {
    const std::vector<std::string> names = {"L-PCM",  "AC-3", "MPEG-1", "MP3",           "MPEG-2",
                                            "AAC LC", "DTS",  "ATRAC",  "One Bit Audio", "Enhanced AC-3",
                                            "DTS-HD", "MAT",  "DST",    "WMA Pro"};
    for (std::size_t code = 1; code <= names.size(); ++code) {
        const display_facts f = facts_of(
            joined({data_block(1, {static_cast<std::uint8_t>(code << 3 | 5), 0x7F, 1}), data_block(4, {1, 0, 0})}));
        ASSERT_EQ(f.cta.audio.size(), 1U);
        EXPECT_EQ(f.cta.audio[0].format, names[code - 1]);
        EXPECT_EQ(f.cta.audio[0].channels, 6);
        EXPECT_EQ(f.cta.audio[0].rates_khz, (std::vector<double>{32, 44.1, 48, 88.2, 96, 176.4, 192}));
        EXPECT_EQ(list_of_findings(f), "");
    }
}

TEST(audio_data_block, has_sample_sizes_or_the_bit_rate) {
    const display_facts f = facts_of(data_block(1, {0x09, 0x04, 0x05, 0x15, 0x07, 80}));
    EXPECT_EQ(f.cta.audio.at(0).bits, (std::vector<std::uint8_t>{16, 24}));
    EXPECT_EQ(f.cta.audio.at(0).channels, 2);
    EXPECT_EQ(f.cta.audio.at(0).rates_khz, std::vector<double>{48});
    EXPECT_EQ(f.cta.audio.at(0).max_bitrate_kbps, 0);
    EXPECT_EQ(f.cta.audio.at(1).max_bitrate_kbps, 640);
    EXPECT_TRUE(f.cta.audio.at(1).bits.empty());
}

TEST(audio_data_block, has_extended_formats) {
    const std::vector<std::pair<int, std::string>> names = {{4, "MPEG-4 HE AAC"},
                                                            {5, "MPEG-4 HE AAC v2"},
                                                            {6, "MPEG-4 AAC LC"},
                                                            {7, "DRA"},
                                                            {8, "MPEG-4 HE AAC + MPEG Surround"},
                                                            {10, "MPEG-4 AAC LC + MPEG Surround"},
                                                            {11, "MPEG-H 3D Audio"},
                                                            {12, "AC-4"},
                                                            {13, "L-PCM 3D Audio"}};
    for (const auto& [code, name] : names)
        EXPECT_EQ(facts_of(data_block(1, {0x78, 0x04, static_cast<std::uint8_t>(code << 3)})).cta.audio.at(0).format,
                  name);
    // 3D audio: five bits of channels
    EXPECT_EQ(facts_of(data_block(1, {0xFB, 0x84, 13 << 3})).cta.audio.at(0).channels, 28);
}

TEST(audio_data_block, reports_what_is_reserved_or_missing) {
    EXPECT_EQ(findings_about(facts_of(data_block(1, {0x00, 0x04, 1})), "reserved code").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(data_block(1, {0x78, 0x04, 0})), "reserved code").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(data_block(1, {0x09, 0x00, 1})), "no sampling rate").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(data_block(1, {0x09, 0x04, 0})), "no sample size").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(data_block(1, {0x09, 0x04, 1, 0})), "whole number of descriptors").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(data_block(1, {0x09, 0x04, 1})), "no speaker allocation").size(), 1U);
    const bytes both = joined({data_block(1, {0x09, 0x04, 1}), data_block(4, {1, 0, 0})});
    EXPECT_EQ(findings_about(display_edid().extend_cta(both).facts(), "basic audio").size(), 1U);
}

TEST(speaker_block, has_its_bits) {
    const display_facts f = facts_of(data_block(4, {0x4F, 0x10, 0x01}));
    EXPECT_EQ(f.cta.speakers, 0x01104FU);
    EXPECT_EQ(speaker_name(0), "front left and right");
    EXPECT_EQ(speaker_name(8), "top front left and right");
    EXPECT_EQ(speaker_name(16), "top back left and right");
    EXPECT_EQ(speaker_name(23), "");
    EXPECT_EQ(findings_about(facts_of(data_block(4, {1})), "shorter than 3").size(), 1U);
}

TEST(hdmi_block, has_address_colours_and_clock) {
    const display_facts f =
        facts_of(joined({data_block(3, joined({hdmi_head, {0x12, 0xF0, 0xB9, 68}})), data_block(2, {16})}));
    ASSERT_TRUE(f.cta.hdmi);
    const hdmi_block& h = *f.cta.hdmi;
    EXPECT_EQ(h.address_text(), "1.2.f.0");
    EXPECT_TRUE(h.supports_ai && h.deep_color_36 && h.deep_color_30 && h.deep_color_ycbcr444 && h.dual_link_dvi);
    EXPECT_FALSE(h.deep_color_48);
    EXPECT_EQ(h.max_tmds_mhz, 340);
    EXPECT_EQ(h.video_latency_ms, std::nullopt);
    EXPECT_EQ(list_of_findings(f), "");
}

TEST(hdmi_block, has_no_address_if_it_is_too_short) {
    const display_facts f = facts_of(data_block(3, hdmi_head));
    EXPECT_EQ(f.cta.hdmi.value().address_text(), "");
    EXPECT_EQ(findings_about(f, "shorter than 5").size(), 1U);
    EXPECT_TRUE(findings_about(f, "physical address").empty());
}

TEST(hdmi_block, has_latencies_contents_and_formats) {
    const bytes block = joined({hdmi_head, {0x10, 0x00, 0, 0, 0xE9, 11, 0, 255, 101, 0x80, 0x40, 1, 4}});
    const display_facts f = facts_of(data_block(3, block));
    const hdmi_block& h = f.cta.hdmi.value();
    EXPECT_EQ(h.video_latency_ms, 20);
    EXPECT_EQ(h.audio_latency_ms, std::nullopt);
    EXPECT_EQ(h.interlaced_video_latency_ms, std::nullopt);
    EXPECT_EQ(h.interlaced_audio_latency_ms, 200);
    EXPECT_EQ(h.content_types, (std::vector<std::string_view>{"graphics", "game"}));
    EXPECT_TRUE(h.stereo_3d);
    EXPECT_EQ(h.hdmi_vics, (std::vector<std::uint8_t>{1, 4}));
    const auto mode = std::find_if(f.modes.begin(), f.modes.end(),
                                   [](const video_mode& m) { return m.source == mode_source::hdmi_vic; });
    ASSERT_NE(mode, f.modes.end());
    EXPECT_EQ(mode->width, 3840U);
    EXPECT_DOUBLE_EQ(mode->refresh_hz, 30);
}

TEST(hdmi_block, reports_what_is_wrong) {
    const auto with = [](const bytes& rest) { return facts_of(data_block(3, joined({hdmi_head, rest}))); };
    EXPECT_EQ(findings_about(with({0x10, 0x20}), "zero before a later part").size(), 1U);
    EXPECT_EQ(findings_about(with({0x00, 0x00}), "root device").size(), 1U);
    EXPECT_EQ(findings_about(with({0x10}), "shorter than 5").size(), 1U);
    EXPECT_EQ(findings_about(with({0x10, 0, 0, 0, 0x20, 0, 0x60, 1}), "longer than their block").size(), 1U);
    EXPECT_EQ(findings_about(with({0x10, 0, 0, 0, 0x20, 0, 0x20, 9}), "code 9 is reserved").size(), 1U);
    EXPECT_EQ(findings_about(with({0x10, 0}), "video data block that HDMI requires").size(), 1U);
}

TEST(hdmi_forum_block, has_link_refresh_and_compression) {
    const bytes forum = joined({hdmi_forum_head, {1, 120, 0xC8, 0x6B, 0x46, 0xB0, 144, 0xC3, 0x65, 11}});
    const bytes all =
        joined({data_block(3, joined({hdmi_head, {0x10, 0}})), data_block(3, forum), data_block(2, {16})});
    const display_facts f = facts_of(all);
    ASSERT_TRUE(f.cta.hdmi_forum);
    const hdmi_forum_block& h = *f.cta.hdmi_forum;
    EXPECT_EQ(h.max_tmds_mhz, 600);
    EXPECT_TRUE(h.scdc && h.read_request && h.scrambling_up_to_340);
    EXPECT_EQ(h.frl_lanes, 4);
    EXPECT_EQ(h.frl_gbps, 12);
    EXPECT_TRUE(h.uhd_vic && h.deep_color_420_36 && h.deep_color_420_30);
    EXPECT_FALSE(h.deep_color_420_48);
    EXPECT_TRUE(h.qms && h.fast_vactive && h.allm);
    EXPECT_FALSE(h.cinema_vrr);
    EXPECT_EQ(h.vrr_min_hz, 48);
    EXPECT_EQ(h.vrr_max_hz, 2 * 256 + 144);
    EXPECT_TRUE(h.dsc && h.dsc_native_420 && h.dsc_12_bit && h.dsc_10_bit);
    EXPECT_FALSE(h.dsc_16_bit);
    EXPECT_EQ(h.dsc_frl_gbps, 12);
    EXPECT_EQ(h.dsc_max_slices, 8);
    EXPECT_EQ(h.dsc_slice_mhz, 400);
    EXPECT_EQ(h.dsc_chunk_bytes, 12U * 1024);
    EXPECT_EQ(list_of_findings(f), "");
}

TEST(hdmi_forum_block, can_be_a_sink_capability_block) {
    const display_facts f = facts_of(extended_block(0x79, {0, 0, 1, 0, 0x80, 0x30}));
    EXPECT_EQ(f.cta.hdmi_forum.value().frl_gbps, 6);
    EXPECT_TRUE(f.cta.hdmi_forum->scdc);
    EXPECT_EQ(findings_about(f, "but no HDMI vendor block").size(), 1U);
}

TEST(hdmi_forum_block, reports_what_is_wrong) {
    const auto with = [](const bytes& rest) { return facts_of(data_block(3, joined({hdmi_forum_head, rest}))); };
    EXPECT_EQ(findings_about(with({2, 0, 0, 0}), "version").size(), 1U);
    EXPECT_EQ(findings_about(with({1, 68, 0, 0}), "TMDS character rate").size(), 1U);
    EXPECT_EQ(findings_about(with({1, 0, 0, 0x70}), "reserved code").size(), 1U);
    EXPECT_EQ(findings_about(with({1, 0, 0, 0, 0, 48, 40}), "not below its maximum").size(), 1U);
    EXPECT_EQ(findings_about(with({1, 0}), "shorter than 7").size(), 1U);
}

TEST(vendor_block, is_kept_as_bytes_if_it_is_not_known) {
    const display_facts f = facts_of(data_block(3, {0x1A, 0x00, 0x00, 1, 2, 3}));
    ASSERT_EQ(f.cta.vendors.size(), 1U);
    EXPECT_EQ(f.cta.vendors[0].oui, 0x1AU);
    EXPECT_EQ(f.cta.vendors[0].vendor, "AMD");
    EXPECT_EQ(f.cta.vendors[0].bytes, (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_EQ(f.cta.vendors[0].where.offset, 5);
    EXPECT_EQ(findings_about(facts_of(data_block(3, {1, 2})), "no identifier").size(), 1U);
}

TEST(vendor_video_block, can_be_hdr10_plus_or_dolby_vision) {
    EXPECT_TRUE(facts_of(extended_block(1, {0x8B, 0x84, 0x90, 1})).cta.hdr10_plus);
    EXPECT_EQ(facts_of(extended_block(1, {0x46, 0xD0, 0x00, 0x41})).cta.dolby_vision, 3);
}

TEST(video_capability_block, has_quantization_and_scan) {
    const video_capability c = facts_of(extended_block(0, {0x4B})).cta.capability.value();
    EXPECT_FALSE(c.quantization_ycbcr_selectable);
    EXPECT_TRUE(c.quantization_rgb_selectable);
    EXPECT_EQ(c.preferred_timing, scan_behavior::not_stated);
    EXPECT_EQ(c.it_formats, scan_behavior::underscan);
    EXPECT_EQ(c.ce_formats, scan_behavior::both);
}

TEST(colorimetry_block, has_names) {
    const display_facts f = facts_of(extended_block(5, {0xC1, 0x80}));
    EXPECT_EQ(f.cta.colorimetry, (std::vector<std::string_view>{"xvYCC_601", "BT2020_YCC", "BT2020_RGB", "DCI-P3"}));
    EXPECT_EQ(findings_about(facts_of(extended_block(5, {0, 0x02})), "Reserved bits of the colorimetry").size(), 1U);
}

TEST(hdr_block, has_transfer_functions_and_luminance) {
    // CTA-861, 7.5.13: 50 * 2 ^ (code / 32); the minimum is a share of the maximum
    const hdr_static_metadata h = facts_of(extended_block(6, {0x0D, 0x01, 96, 64, 255})).cta.hdr.value();
    EXPECT_EQ(h.eotfs, (std::vector<std::string_view>{"SDR", "PQ", "HLG"}));
    EXPECT_TRUE(h.static_metadata_type_1);
    EXPECT_DOUBLE_EQ(h.max_nits.value(), 400);
    EXPECT_DOUBLE_EQ(h.max_average_nits.value(), 200);
    EXPECT_DOUBLE_EQ(h.min_nits.value(), 4);
    const hdr_static_metadata without = facts_of(extended_block(6, {0x01, 0x01, 0})).cta.hdr.value();
    EXPECT_EQ(without.max_nits, std::nullopt);
    EXPECT_EQ(without.max_average_nits, std::nullopt);
    EXPECT_EQ(without.min_nits, std::nullopt);
    EXPECT_EQ(findings_about(facts_of(extended_block(6, {0x10, 1})), "Reserved transfer functions").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(extended_block(6, {0x01, 1})), "no colorimetry").size(), 1U);
}

TEST(hdr_dynamic_block, has_its_types) {
    const display_facts f = facts_of(extended_block(7, {3, 1, 0, 0, 2, 4, 0}));
    EXPECT_EQ(f.cta.hdr_dynamic_types, (std::vector<std::uint16_t>{1, 4}));
}

TEST(ycbcr420_map, marks_the_descriptors_of_its_bits) {
    const display_facts f = facts_of(joined({data_block(2, {16, 97, 96}), extended_block(15, {0x06})}));
    EXPECT_FALSE(f.cta.video.at(0).ycbcr420);
    EXPECT_TRUE(f.cta.video.at(1).ycbcr420);
    EXPECT_TRUE(f.cta.video.at(2).ycbcr420);
    const display_facts all = facts_of(joined({data_block(2, {16, 97}), extended_block(15, {})}));
    EXPECT_TRUE(all.cta.video.at(0).ycbcr420 && all.cta.video.at(1).ycbcr420);
    const display_facts more = facts_of(joined({data_block(2, {16}), extended_block(15, {0x02})}));
    EXPECT_EQ(findings_about(more, "more bits than").size(), 1U);
}

TEST(ycbcr420_video_block, has_codes_for_that_encoding_alone) {
    const display_facts f = facts_of(extended_block(14, {96, 97}));
    ASSERT_EQ(f.cta.video.size(), 2U);
    EXPECT_EQ(f.cta.video[1].vic, 97);
    EXPECT_TRUE(f.cta.video[1].ycbcr420_only);
    EXPECT_EQ(f.modes.back().source, mode_source::ycbcr420_data_block);
}

TEST(data_blocks, are_kept_as_bytes_if_they_are_not_known) {
    const display_facts f = facts_of(joined({extended_block(0x13, {7, 8}), data_block(6, {9}), data_block(5, {1, 2})}));
    ASSERT_EQ(f.unknown.size(), 3U);
    EXPECT_EQ(f.unknown[0].bytes, (std::vector<std::uint8_t>{0x13, 7, 8}));
    EXPECT_EQ(f.unknown[1].bytes, (std::vector<std::uint8_t>{0xC1, 9}));
    EXPECT_EQ(findings_about(f, "reserved tag").size(), 1U);
}

TEST(data_blocks, that_overrun_are_cut) {
    const display_facts f = facts_of({0x45, 16, 4});
    ASSERT_EQ(findings_about(f, "goes beyond").size(), 1U);
    EXPECT_EQ(findings_about(f, "goes beyond")[0].level, severity::error);
    EXPECT_EQ(f.cta.video.size(), 2U);
}

TEST(data_blocks, that_occur_twice_are_found) {
    const std::vector<std::pair<bytes, std::string>> twice = {{data_block(4, {1, 0, 0}), "second speaker"},
                                                              {extended_block(0, {1}), "second video capability"},
                                                              {extended_block(5, {1, 0}), "second colorimetry"},
                                                              {extended_block(6, {1, 1}), "second HDR static"}};
    for (const auto& [block, text] : twice)
        EXPECT_EQ(findings_about(facts_of(joined({block, block})), text).size(), 1U) << text;
}

TEST(data_blocks, without_what_they_need_are_found) {
    EXPECT_EQ(findings_about(facts_of({0xE0}), "has no tag").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(extended_block(0, {})), "capability data block is empty").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(extended_block(5, {1})), "shorter than 2").size(), 1U);
    EXPECT_EQ(findings_about(facts_of(extended_block(6, {1})), "too short").size(), 1U);
    EXPECT_EQ(findings_about(display_edid().put(35, {0}).extend_cta({}).facts(), "640x480 at 60 Hz, which").size(), 1U);
}

TEST(cta_block, reports_a_wrong_header_and_padding) {
    EXPECT_EQ(findings_about(display_edid().extend({2, 4, 0, 0}).facts(), "no revision 4").size(), 1U);
    EXPECT_EQ(findings_about(display_edid().extend({2, 3, 3, 0}).facts(), "can't begin at byte 3").size(), 1U);
    EXPECT_EQ(findings_about(display_edid().extend({2, 3, 128, 0}).facts(), "can't begin at byte 128").size(), 1U);
    EXPECT_EQ(findings_about(display_edid().extend({2, 2, 6, 0, 0x41, 16}).facts(), "need revision 3").size(), 1U);
    EXPECT_EQ(findings_about(display_edid().extend({2, 3, 4, 0, 0, 0, 0, 0, 0, 5}).facts(), "padding").size(), 1U);
}

} // namespace
} // namespace desk::facts
