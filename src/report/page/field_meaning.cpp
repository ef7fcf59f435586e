#include "report/page/field_meaning.h"

#include "edid/facts/vic_table.h"
#include "edid/format/buffer.h"
#include "report/page/words.h"
#include "runtime/windows_1252.h"

#include <algorithm>

namespace desk::page {

namespace {

using facts::display_facts;
using facts::part;

std::string point_words(facts::color_point p) {
    return drawing::number_text(p.x, 4) + ", " + drawing::number_text(p.y, 4);
}

std::string color_words(const display_facts& facts) {
    if (!facts.colors) return "";
    return "Red " + point_words(facts.colors->red) + "; green " + point_words(facts.colors->green) + "; blue " +
           point_words(facts.colors->blue) + "; white " + point_words(facts.colors->white);
}

std::string modes_in(const field& f, const display_facts& facts) {
    std::string words;
    for (const facts::video_mode& mode : facts.modes) {
        if (!f.has(mode.where)) continue;
        if (!words.empty()) words += "; ";
        words += mode_words(mode);
    }
    return words;
}

std::string product_words(const display_facts& facts) {
    std::string words = facts.maker + ", product " + hex_words(facts.product_code, 4);
    if (facts.serial_number) words += ", serial number " + std::to_string(*facts.serial_number);
    append_listed(words, date_words(facts));
    return words;
}

std::string feature_words(const field& f, const display_facts& facts) {
    if (f.name == "Size") {
        if (facts.width_cm && facts.height_cm)
            return std::to_string(*facts.width_cm) + " \xC3\x97 " + std::to_string(*facts.height_cm) + " cm";
        return facts.aspect ? "Aspect ratio " + drawing::number_text(*facts.aspect, 2) : "not stated";
    }
    if (f.name == "Gamma") return facts.gamma ? drawing::number_text(*facts.gamma, 2) : "not stated";
    std::string words;
    if (facts.digital) {
        append_listed(words, "RGB");
        if (facts.ycbcr444) append_listed(words, "YCbCr 4:4:4");
        if (facts.ycbcr422) append_listed(words, "YCbCr 4:2:2");
    } else {
        append_listed(words, facts.color_type);
    }
    if (facts.srgb_default) append_listed(words, "sRGB is the default");
    if (facts.preferred_is_native) append_listed(words, "the first detailed timing is native");
    return words;
}

/// The text of a display descriptor: what follows its header, to the line feed.
std::string text_words(const field& f, const page_source& source) {
    constexpr std::size_t header = 5;
    std::string text;
    for (std::size_t i = f.block * edid_block_size + f.begin + header;
         i < f.block * edid_block_size + f.end && i < source.bytes.size() && source.bytes[i] != '\n'; ++i)
        text += static_cast<char>(source.bytes[i]);
    return text_from_bytes(text);
}

std::string audio_words(const field& f, const display_facts& facts) {
    std::string words;
    for (const facts::audio_format& a : facts.cta.audio) {
        if (!f.has(a.where)) continue;
        std::string one(a.format);
        if (a.channels != 0) one += ", " + count_words(a.channels, "channel");
        if (!words.empty()) words += "; ";
        words += one;
    }
    return words;
}

/// The bits of a capability map name formats of the video data blocks.
std::string ycbcr420_map_words(const display_facts& facts) {
    std::string words;
    for (const facts::video_code& code : facts.cta.video)
        if (code.ycbcr420 && !code.ycbcr420_only) {
            if (!words.empty()) words += "; ";
            words += video_words(code);
        }
    return words;
}

std::string video_list(const field& f, const display_facts& facts) {
    if (f.name == "YCbCr 4:2:0 capability map data block") return ycbcr420_map_words(facts);
    std::string words;
    for (const facts::video_code& code : facts.cta.video) {
        if (!f.has(code.where)) continue;
        if (!words.empty()) words += "; ";
        words += video_words(code);
    }
    return words;
}

std::string vendor_words(const field& f, const display_facts& facts) {
    if (facts.cta.hdmi && f.has(facts.cta.hdmi->where)) return "HDMI, " + address_words(*facts.cta.hdmi);
    if (facts.cta.hdmi_forum && f.has(facts.cta.hdmi_forum->where)) {
        std::string words = "HDMI Forum";
        append_listed(words, link_words(facts.cta.hdmi_forum->frl_lanes, facts.cta.hdmi_forum->frl_gbps));
        return words;
    }
    for (const facts::vendor_block& v : facts.cta.vendors)
        if (f.has(v.where)) return v.vendor.empty() ? "Vendor " + hex_words(v.oui, 6) : std::string(v.vendor);
    return "";
}

std::string capability_words(const field& f, const display_facts& facts) {
    std::string words;
    if (f.name == "Video capability data block" && facts.cta.capability) {
        if (facts.cta.capability->quantization_rgb_selectable) append_listed(words, "selectable RGB range");
        if (facts.cta.capability->quantization_ycbcr_selectable) append_listed(words, "selectable YCbCr range");
    }
    if (f.name != "Colorimetry data block") return words;
    for (const std::string_view name : facts.cta.colorimetry)
        append_listed(words, name);
    return words;
}

std::string checksum_words(const field& f, const display_facts& facts) {
    if (f.name != "Checksum" || f.block >= facts.checksums.size()) return "";
    return facts.checksums[f.block] ? "correct" : "wrong";
}

std::string header_words(const field& f, const page_source& source) {
    if (f.name == "Number of extension blocks")
        return std::to_string(source.bytes[f.block * edid_block_size + f.begin]);
    for (const facts::cta_block& b : source.facts.cta.blocks)
        if (b.block == f.block)
            return "revision " + std::to_string(b.revision) + ", " +
                   count_words(b.native_timings, "native detailed timing");
    return "";
}

std::string standard_words(const field& f, const page_source& source) {
    const std::size_t begin = f.block * edid_block_size + f.begin;
    constexpr std::uint8_t unused = 1;
    if (f.name == "Standard timing" && source.bytes[begin] == unused && source.bytes[begin + 1] == unused)
        return "not used";
    return modes_in(f, source.facts);
}

std::string display_id_words(const field& f, const display_facts& facts) {
    std::string modes = modes_in(f, facts);
    if (!modes.empty()) return modes;
    for (const facts::display_id_section& s : facts.display_id)
        if (s.block == f.block) return s.product_name;
    return "";
}

} // namespace

std::string video_words(const facts::video_code& code) {
    const facts::vic_timing* timing = facts::timing_of_vic(code.vic);
    std::string words =
        timing == nullptr ? "Reserved code" : resolution_words(timing->h_active, timing->v_active, timing->interlaced);
    return words + " (VIC " + std::to_string(code.vic) + (code.native ? ", native)" : ")");
}

std::string speaker_words(std::uint32_t bits) {
    constexpr unsigned bit_count = 24;
    std::string words;
    for (unsigned bit = 0; bit < bit_count; ++bit)
        if ((bits >> bit & 1) != 0) append_listed(words, facts::speaker_name(bit));
    return words;
}

std::string link_words(unsigned lanes, unsigned gbps) {
    if (lanes == 0) return "";
    return std::to_string(lanes) + " lanes of " + std::to_string(gbps) + " Gbit/s";
}

std::string meaning_of(const field& f, const page_source& source) {
    const display_facts& facts = source.facts;
    switch (f.what) {
    case part::header:
        return facts.has_header ? "correct" : "not the header of an EDID";
    case part::extension_header:
        return header_words(f, source);
    case part::product:
        return product_words(facts);
    case part::version:
        return std::to_string(facts.version) + "." + std::to_string(facts.revision);
    case part::input:
        return input_words(facts);
    case part::features:
        return feature_words(f, facts);
    case part::color:
        return f.block == 0 && f.name == "Colour characteristics" ? color_words(facts) : "";
    case part::text:
        return text_words(f, source);
    case part::range_limits:
        return facts.limits && f.has(facts.limits->where) ? range_words(*facts.limits) : "";
    case part::video:
    case part::ycbcr420:
        return video_list(f, facts);
    case part::audio:
        return audio_words(f, facts);
    case part::speakers:
        return facts.cta.speakers ? speaker_words(*facts.cta.speakers) : "";
    case part::vendor:
        return vendor_words(f, facts);
    case part::capability:
        return capability_words(f, facts);
    case part::hdr:
        return f.name == "HDR static metadata data block" ? hdr_words(facts) : "";
    case part::display_id:
        return display_id_words(f, facts);
    case part::checksum:
        return checksum_words(f, facts);
    case part::standard:
        return standard_words(f, source);
    default:
        return modes_in(f, facts);
    }
}

} // namespace desk::page
