#include "batch/cta_json.h"

#include <array>
#include <string>
#include <string_view>

namespace desk::batch {

namespace {

template <class Numbers>
void write_numbers(json_writer& json, std::string_view name, const Numbers& numbers) {
    json.key(name);
    json.begin_array();
    for (const auto number : numbers) {
        if constexpr (std::is_floating_point_v<std::remove_cv_t<decltype(number)>>)
            json.number(number);
        else
            json.number(std::int64_t{number});
    }
    json.end_array();
}

void write_names(json_writer& json, std::string_view name, const std::vector<std::string_view>& names) {
    json.key(name);
    json.begin_array();
    for (const std::string_view one : names)
        json.text(one);
    json.end_array();
}

void write_video(json_writer& json, const facts::cta_facts& cta) {
    json.key("vics");
    json.begin_array();
    for (const facts::video_code& v : cta.video) {
        // 0 and 128 are no codes
        if (v.ycbcr420_only || v.vic == 0 || v.vic == 128) continue;
        json.begin_object();
        json.member("vic", std::int64_t{v.vic});
        json.member("native", v.native);
        json.end_object();
    }
    json.end_array();
    json.key("ycbcr420_vics");
    json.begin_array();
    for (const facts::video_code& v : cta.video)
        if (v.ycbcr420) json.number(std::int64_t{v.vic});
    json.end_array();
}

void write_audio(json_writer& json, const facts::cta_facts& cta) {
    json.key("audio");
    json.begin_array();
    for (const facts::audio_format& a : cta.audio) {
        json.begin_object();
        json.member("format", a.format);
        json.member_or_null("channels", a.channels);
        write_numbers(json, "rates_khz", a.rates_khz);
        write_numbers(json, "bits", a.bits);
        json.member_or_null("max_bitrate_kbps", a.max_bitrate_kbps);
        json.end_object();
    }
    json.end_array();
    json.key("speakers");
    if (!cta.speakers) return json.null();
    json.begin_array();
    for (unsigned bit = 0; bit < 24; ++bit)
        if ((*cta.speakers >> bit & 1) != 0 && !facts::speaker_name(bit).empty()) json.text(facts::speaker_name(bit));
    json.end_array();
}

void write_hdr(json_writer& json, const facts::cta_facts& cta) {
    json.key("hdr");
    if (!cta.hdr) return json.null();
    json.begin_object();
    write_names(json, "eotfs", cta.hdr->eotfs);
    json.member("max_nits", cta.hdr->max_nits);
    json.member("max_average_nits", cta.hdr->max_average_nits);
    json.member("min_nits", cta.hdr->min_nits);
    json.member("static_metadata_type_1", cta.hdr->static_metadata_type_1);
    json.end_object();
}

void write_hdmi(json_writer& json, const facts::cta_facts& cta) {
    json.key("hdmi");
    if (!cta.hdmi) return json.null();
    const facts::hdmi_block& h = *cta.hdmi;
    json.begin_object();
    json.member("physical_address", std::string_view(h.address_text()));
    json.member_or_null("max_tmds_mhz", h.max_tmds_mhz);
    json.member("supports_ai", h.supports_ai);
    json.member("deep_color_30", h.deep_color_30);
    json.member("deep_color_36", h.deep_color_36);
    json.member("deep_color_48", h.deep_color_48);
    json.member("deep_color_ycbcr444", h.deep_color_ycbcr444);
    json.member("dual_link_dvi", h.dual_link_dvi);
    json.member("video_latency_ms", h.video_latency_ms);
    json.member("audio_latency_ms", h.audio_latency_ms);
    json.member("interlaced_video_latency_ms", h.interlaced_video_latency_ms);
    json.member("interlaced_audio_latency_ms", h.interlaced_audio_latency_ms);
    write_names(json, "content_types", h.content_types);
    json.member("stereo_3d", h.stereo_3d);
    write_numbers(json, "hdmi_vics", h.hdmi_vics);
    json.end_object();
}

void write_hdmi_forum(json_writer& json, const facts::cta_facts& cta) {
    json.key("hdmi_forum");
    if (!cta.hdmi_forum) return json.null();
    const facts::hdmi_forum_block& h = *cta.hdmi_forum;
    json.begin_object();
    json.member_or_null("max_tmds_mhz", h.max_tmds_mhz);
    json.member("scdc", h.scdc);
    json.member_or_null("frl_lanes", h.frl_lanes);
    json.member_or_null("frl_gbps", h.frl_gbps);
    json.member("uhd_vic", h.uhd_vic);
    json.member("deep_color_420_30", h.deep_color_420_30);
    json.member("deep_color_420_36", h.deep_color_420_36);
    json.member("deep_color_420_48", h.deep_color_420_48);
    json.member("allm", h.allm);
    json.member("fast_vactive", h.fast_vactive);
    json.member("qms", h.qms);
    json.member_or_null("vrr_min_hz", h.vrr_min_hz);
    json.member_or_null("vrr_max_hz", h.vrr_max_hz);
    json.member("dsc", h.dsc);
    json.member_or_null("dsc_max_slices", h.dsc_max_slices);
    json.end_object();
}

void write_capability(json_writer& json, const facts::cta_facts& cta) {
    constexpr std::array<std::string_view, 4> scans = {"", "overscan", "underscan", "both"};
    const auto scan = [&](std::string_view name, facts::scan_behavior behavior) {
        json.member(name, scans[static_cast<std::size_t>(behavior)]);
    };
    json.key("video_capability");
    if (!cta.capability) return json.null();
    json.begin_object();
    json.member("quantization_ycbcr_selectable", cta.capability->quantization_ycbcr_selectable);
    json.member("quantization_rgb_selectable", cta.capability->quantization_rgb_selectable);
    scan("preferred_timing", cta.capability->preferred_timing);
    scan("it_formats", cta.capability->it_formats);
    scan("ce_formats", cta.capability->ce_formats);
    json.end_object();
}

void write_headers(json_writer& json, const facts::cta_facts& cta) {
    json.key("cta");
    json.begin_array();
    for (const facts::cta_block& b : cta.blocks) {
        json.begin_object();
        json.member("block", std::int64_t{b.block});
        json.member("revision", std::int64_t{b.revision});
        json.member("underscans", b.underscans);
        json.member("basic_audio", b.basic_audio);
        json.member("ycbcr444", b.ycbcr444);
        json.member("ycbcr422", b.ycbcr422);
        json.member("native_timings", std::int64_t{b.native_timings});
        json.end_object();
    }
    json.end_array();
}

} // namespace

void write_cta_facts(json_writer& json, const facts::cta_facts& cta) {
    write_headers(json, cta);
    write_video(json, cta);
    write_audio(json, cta);
    write_hdr(json, cta);
    write_hdmi(json, cta);
    write_hdmi_forum(json, cta);
    write_capability(json, cta);
    write_names(json, "colorimetry", cta.colorimetry);
    json.member("hdr10_plus", cta.hdr10_plus);
    json.member("dolby_vision", cta.dolby_vision != 0);
}

} // namespace desk::batch
