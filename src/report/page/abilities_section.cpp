#include "report/page/field_meaning.h"
#include "report/page/sections.h"
#include "report/page/words.h"

#include <algorithm>

namespace desk::page {

namespace {

using facts::cta_facts;

/// A list of what a display can and what it can't.
class ability_list {
public:
    ability_list(markup_writer& out, std::string_view title) : out_(out) {
        out_.begin("div");
        out_.element("h3", title);
        out_.begin("ul", "abilities");
    }
    ability_list(const ability_list&) = delete;
    ability_list& operator=(const ability_list&) = delete;
    ~ability_list() {
        out_.end();
        out_.end();
    }

    void add(std::string_view what, bool can, std::string_view detail = {}) {
        out_.begin("li", can ? "can" : "cannot");
        out_.begin("span", "mark").text(can ? "Yes" : "No").end();
        out_.begin("span").text(what);
        if (can && !detail.empty()) out_.text(" ").element("small", detail);
        out_.end();
        out_.end();
    }

private:
    markup_writer& out_;
};

std::string megahertz(unsigned mhz) { return mhz == 0 ? "" : "up to " + std::to_string(mhz) + " MHz"; }

std::string vrr_words(const facts::hdmi_forum_block& h) {
    return std::to_string(h.vrr_min_hz) +
           (h.vrr_max_hz == 0 ? " Hz and more" : " to " + std::to_string(h.vrr_max_hz) + " Hz");
}

std::string depths(bool ten, bool twelve, bool sixteen) {
    std::string words;
    if (ten) append_listed(words, "10");
    if (twelve) append_listed(words, "12");
    if (sixteen) append_listed(words, "16");
    return words.empty() ? "" : words + " bits per colour";
}

std::string latency_words(const facts::hdmi_block& h) {
    std::string words;
    if (h.video_latency_ms) append_listed(words, "video " + std::to_string(*h.video_latency_ms) + " ms");
    if (h.audio_latency_ms) append_listed(words, "audio " + std::to_string(*h.audio_latency_ms) + " ms");
    return words;
}

void write_hdmi(markup_writer& out, const cta_facts& cta) {
    ability_list list(out, "HDMI");
    const facts::hdmi_block h = cta.hdmi.value_or(facts::hdmi_block{});
    const facts::hdmi_forum_block forum = cta.hdmi_forum.value_or(facts::hdmi_forum_block{});
    list.add("HDMI sink", cta.hdmi.has_value(), address_words(h));
    list.add("TMDS above 165 MHz", std::max(h.max_tmds_mhz, forum.max_tmds_mhz) > 165,
             megahertz(std::max(h.max_tmds_mhz, forum.max_tmds_mhz)));
    list.add("Fixed rate link", forum.frl_lanes != 0, link_words(forum.frl_lanes, forum.frl_gbps));
    list.add("Stream compression (DSC)", forum.dsc);
    list.add("Deep colour", h.deep_color_30 || h.deep_color_36 || h.deep_color_48,
             depths(h.deep_color_30, h.deep_color_36, h.deep_color_48));
    list.add("Deep colour in YCbCr 4:2:0",
             forum.deep_color_420_30 || forum.deep_color_420_36 || forum.deep_color_420_48,
             depths(forum.deep_color_420_30, forum.deep_color_420_36, forum.deep_color_420_48));
    list.add("Variable refresh rate (VRR)", forum.vrr_min_hz != 0, vrr_words(forum));
    list.add("Auto low-latency mode (ALLM)", forum.allm);
    list.add("Quick media switching (QMS)", forum.qms);
    list.add("Status and control channel (SCDC)", forum.scdc);
    list.add("Stereoscopic 3D", h.stereo_3d);
    const std::string latency = latency_words(h);
    list.add("Latency stated", !latency.empty(), latency);
    std::string contents;
    for (const std::string_view name : h.content_types)
        append_listed(contents, name);
    list.add("Content types", !contents.empty(), contents);
    list.add("ACP, ISRC1 and ISRC2 packets", h.supports_ai);
}

std::string nits(const std::optional<double>& value) {
    return value ? drawing::number_text(*value, *value < 1 ? 4 : 0) + " cd/m\xC2\xB2" : "";
}

void write_hdr(markup_writer& out, const cta_facts& cta) {
    ability_list list(out, "High dynamic range");
    const facts::hdr_static_metadata hdr = cta.hdr.value_or(facts::hdr_static_metadata{});
    const auto takes = [&](std::string_view name) {
        return std::find(hdr.eotfs.begin(), hdr.eotfs.end(), name) != hdr.eotfs.end();
    };
    list.add("Perceptual quantizer (PQ)", takes("PQ"));
    list.add("Hybrid log-gamma (HLG)", takes("HLG"));
    list.add("Traditional gamma, HDR", takes("HDR"));
    list.add("Static metadata type 1", hdr.static_metadata_type_1);
    list.add("HDR10+", cta.hdr10_plus);
    list.add("Dolby Vision", cta.dolby_vision != 0);
    list.add("Maximum luminance stated", hdr.max_nits.has_value(), nits(hdr.max_nits));
    list.add("Maximum average luminance stated", hdr.max_average_nits.has_value(), nits(hdr.max_average_nits));
    list.add("Minimum luminance stated", hdr.min_nits.has_value(), nits(hdr.min_nits));
}

void write_signals(markup_writer& out, const facts::display_facts& facts) {
    const cta_facts& cta = facts.cta;
    ability_list list(out, "Colour and picture");
    const auto any = [&](auto member) {
        return std::any_of(cta.blocks.begin(), cta.blocks.end(), [&](const auto& b) { return b.*member; });
    };
    const auto takes = [&](std::string_view start) {
        return std::any_of(cta.colorimetry.begin(), cta.colorimetry.end(),
                           [&](std::string_view name) { return name.starts_with(start); });
    };
    const auto count_420 = std::count_if(cta.video.begin(), cta.video.end(), [](const auto& v) { return v.ycbcr420; });
    list.add("YCbCr 4:4:4", facts.ycbcr444 || any(&facts::cta_block::ycbcr444));
    list.add("YCbCr 4:2:2", facts.ycbcr422 || any(&facts::cta_block::ycbcr422));
    list.add("YCbCr 4:2:0", count_420 > 0, "in " + count_words(static_cast<std::size_t>(count_420), "format"));
    list.add("BT.2020", takes("BT2020"));
    list.add("DCI-P3", takes("DCI-P3"));
    list.add("xvYCC", takes("xvYCC"));
    list.add("opRGB or opYCC", takes("op"));
    list.add("Selectable RGB range", cta.capability && cta.capability->quantization_rgb_selectable);
    list.add("Selectable YCbCr range", cta.capability && cta.capability->quantization_ycbcr_selectable);
    list.add("Underscans", any(&facts::cta_block::underscans));
}

} // namespace

void write_abilities(markup_writer& out, const page_source& source) {
    begin_section(out, "abilities", "HDMI and HDR");
    if (source.facts.cta.blocks.empty() && source.facts.display_id.empty())
        out.element("p", "quiet", "The EDID has no CTA-861 block, which would state these abilities.");
    out.begin("div", "columns three");
    write_hdmi(out, source.facts.cta);
    write_hdr(out, source.facts.cta);
    write_signals(out, source.facts);
    out.end();
    out.end();
}

} // namespace desk::page
