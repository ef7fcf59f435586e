#include "drawing/speaker_plan.h"
#include "report/page/field_meaning.h"
#include "report/page/sections.h"
#include "report/page/words.h"

#include <algorithm>
#include <array>
#include <vector>

namespace desk::page {

namespace {

using drawing::speaker_height;

/// The speakers of a bit of the speaker allocation: one, or one at each side.
struct allocated_speakers {
    std::string_view left; ///< or the only one
    std::string_view right;
    double across; ///< of the right one
    double ahead;
    speaker_height height;
    bool usual; ///< is drawn even if absent
};

// CTA-861, 7.5.3, bit 0 first
constexpr std::array<allocated_speakers, 20> allocation = {{
    {"FL", "FR", 0.62, 0.84, speaker_height::ear, true},
    {"LFE", "", 0.32, 0.26, speaker_height::subwoofer, true},
    {"FC", "", 0, 0.92, speaker_height::ear, true},
    {"BL", "BR", 0.62, -0.84, speaker_height::ear, true},
    {"BC", "", 0, -0.84, speaker_height::ear, false},
    {"FLc", "FRc", 0.31, 0.92, speaker_height::ear, false},
    {"RLc", "RRc", 0.31, -0.9, speaker_height::ear, false},
    {"FLw", "FRw", 0.97, 0.38, speaker_height::ear, false},
    {"TpL", "TpR", 0.34, 0.6, speaker_height::top, false},
    {"TpC", "", 0, 0.26, speaker_height::top, false},
    {"TpF", "", 0, 0.5, speaker_height::top, false},
    {"LS", "RS", 0.9, -0.22, speaker_height::ear, false},
    {"LF2", "", -0.32, 0.26, speaker_height::subwoofer, false},
    {"TpB", "", 0, -0.6, speaker_height::top, false},
    {"SiL", "SiR", 0.9, 0, speaker_height::ear, true},
    {"TSL", "TSR", 0.6, 0, speaker_height::top, false},
    {"TBL", "TBR", 0.36, -0.6, speaker_height::top, false},
    {"BtC", "", 0, 0.71, speaker_height::bottom, false},
    {"BtL", "BtR", 0.68, 0.62, speaker_height::bottom, false},
    {"TLS", "TRS", 0.6, -0.3, speaker_height::top, false},
}};

std::vector<drawing::placed_speaker> placed(std::uint32_t bits) {
    std::vector<drawing::placed_speaker> all;
    for (std::size_t bit = 0; bit < allocation.size(); ++bit) {
        const allocated_speakers& a = allocation.at(bit);
        const bool present = (bits >> bit & 1) != 0;
        if (!present && !a.usual) continue;
        if (a.right.empty()) {
            all.push_back({a.left, a.across, a.ahead, a.height, present});
        } else {
            all.push_back({a.left, -a.across, a.ahead, a.height, present});
            all.push_back({a.right, a.across, a.ahead, a.height, present});
        }
    }
    return all;
}

std::string numbers_list(const std::vector<double>& numbers) {
    std::string words;
    for (const double n : numbers)
        append_listed(words, drawing::number_text(n, 1));
    return words;
}

std::string detail_words(const facts::audio_format& a) {
    std::string words;
    for (const std::uint8_t bits : a.bits)
        append_listed(words, std::to_string(bits));
    if (!words.empty()) words += " bits";
    if (a.max_bitrate_kbps != 0) append_listed(words, "up to " + std::to_string(a.max_bitrate_kbps) + " kbit/s");
    return words;
}

void write_formats(markup_writer& out, const facts::cta_facts& cta, const field_map& fields) {
    begin_table(out, "audio", "Audio formats");
    table_head(out, {"Format", "#Channels", "Rates, kHz", "Sample size or bit rate", "Bytes"});
    out.begin("tbody");
    for (const facts::audio_format& a : cta.audio) {
        out.begin("tr");
        out.begin("th").attribute("scope", "row").text(a.format).end();
        out.element("td", "number", a.channels == 0 ? "" : std::to_string(a.channels));
        out.element("td", numbers_list(a.rates_khz));
        out.element("td", detail_words(a));
        out.begin("td");
        link_to_bytes(out, fields, a.where.block, a.where.offset);
        out.end();
        out.end();
    }
    out.end();
    end_table(out);
}

} // namespace

void write_sound(markup_writer& out, const page_source& source, const field_map& fields) {
    const facts::cta_facts& cta = source.facts.cta;
    const bool basic = std::any_of(cta.blocks.begin(), cta.blocks.end(), [](const auto& b) { return b.basic_audio; });
    begin_section(out, "audio", "Audio");
    if (cta.audio.empty() && !cta.speakers) {
        out.element("p", "quiet",
                    basic ? "Basic audio: two channels of L-PCM at 32, 44.1 and 48 kHz."
                          : "The EDID describes no audio.");
        return out.end();
    }
    out.begin("div", "columns uneven");
    out.begin("div");
    if (!cta.audio.empty()) write_formats(out, cta, fields);
    out.element("p", "quiet", basic ? "Basic audio is supported." : "Basic audio is not supported.");
    out.end();
    if (cta.speakers) {
        const std::string words = speaker_words(*cta.speakers);
        out.begin("figure", "speakers");
        drawing::draw_speaker_plan(out, placed(*cta.speakers),
                                   "Plan of the speakers: " + (words.empty() ? "none" : words) + ".");
        out.begin("figcaption").text("Speakers: " + (words.empty() ? "none" : words) + ".").end();
        out.end();
    }
    out.end();
    out.end();
}

} // namespace desk::page
