#include "drawing/mode_chart.h"
#include "drawing/timing_raster.h"
#include "report/page/sections.h"
#include "report/page/words.h"

#include <vector>

namespace desk::page {

namespace {

using drawing::number_text;

constexpr double khz_of_mhz = 1000;

std::string clock_words(std::uint32_t khz) { return number_text(khz / khz_of_mhz, 2) + " MHz"; }

std::vector<drawing::charted_mode> charted(const facts::display_facts& facts) {
    std::vector<drawing::charted_mode> all;
    all.reserve(facts.modes.size());
    for (const facts::video_mode& m : facts.modes)
        all.push_back({m.width, m.height, m.refresh_hz, m.pixel_clock_khz / khz_of_mhz, m.interlaced, m.native,
                       mode_words(m) + ", " + clock_words(m.pixel_clock_khz)});
    return all;
}

void write_dot(markup_writer& out, std::string_view class_name) {
    out.begin("svg", "dot").attribute("xmlns", "http://www.w3.org/2000/svg").attribute("viewBox", "0 0 20 20");
    out.attribute("aria-hidden", "true");
    if (class_name == "native-ring") {
        out.begin("circle", "native-ring").attribute("cx", 10).attribute("cy", 10).attribute("r", 8).end_void();
    } else {
        out.begin("circle", class_name).attribute("cx", 10).attribute("cy", 10).attribute("r", 6).end_void();
    }
    out.end();
}

void write_key(markup_writer& out, std::string_view class_name, std::string_view words) {
    out.begin("li");
    write_dot(out, class_name);
    out.text(words).end();
}

void write_chart(markup_writer& out, const facts::display_facts& facts) {
    out.begin("figure", "wide");
    drawing::draw_mode_chart(out, charted(facts));
    out.begin("figcaption");
    out.begin("ul", "key");
    for (const drawing::clock_class& c : drawing::clock_classes())
        write_key(out, c.class_name, c.words);
    write_key(out, "clock-3 hollow", "interlaced");
    write_key(out, "native-ring", "native or preferred");
    out.end();
    out.end();
    out.end();
}

std::string code_words(const facts::video_mode& mode) {
    std::string words;
    if (mode.vic != 0) append_listed(words, "VIC " + std::to_string(mode.vic));
    if (mode.dmt != 0) append_listed(words, "DMT " + hex_words(mode.dmt, 2));
    append_listed(words, mode.formula);
    return words;
}

std::string traits_of(const facts::video_mode& mode) {
    std::string words;
    if (mode.native) append_listed(words, "native");
    if (mode.reduced_blanking) append_listed(words, "reduced blanking");
    return words;
}

void write_modes(markup_writer& out, const facts::display_facts& facts, const field_map& fields) {
    begin_table(out, "modes", "All timings");
    table_head(out, {"Resolution", "#Refresh, Hz", "#Line rate, kHz", "#Pixel clock, MHz", "From", "Code", "Bytes"});
    out.begin("tbody");
    for (const facts::video_mode& m : facts.modes) {
        out.begin("tr");
        out.begin("th").attribute("scope", "row").text(resolution_words(m.width, m.height, m.interlaced));
        if (const std::string traits = traits_of(m); !traits.empty()) out.text(" ").element("small", traits);
        out.end();
        out.begin("td", "number").fixed(m.refresh_hz, 2).end();
        out.begin("td", "number").fixed(m.h_khz, 2).end();
        out.begin("td", "number").fixed(m.pixel_clock_khz / khz_of_mhz, 2).end();
        out.element("td", name_of(m.source));
        out.element("td", code_words(m));
        out.begin("td");
        link_to_bytes(out, fields, m.where.block, m.where.offset);
        out.end();
        out.end();
    }
    out.end();
    end_table(out);
}

/// What is left of a blanking after front porch and sync; borders are part of the porches.
drawing::raster_line raster_of(std::uint32_t active, std::uint32_t blank, std::uint32_t front, std::uint32_t sync) {
    return {active, front, sync, blank > front + sync ? blank - front - sync : 0};
}

void write_figures(markup_writer& out, std::string_view direction, const drawing::raster_line& line) {
    out.begin("tr");
    out.begin("th").attribute("scope", "row").text(direction).end();
    for (const std::uint32_t figure : {line.active, line.front, line.sync, line.back, line.total()})
        out.begin("td", "number").fixed(figure, 0).end();
    out.end();
}

void write_detailed(markup_writer& out, const facts::detailed_timing& t, const field_map& fields) {
    const drawing::raster_line across = raster_of(t.h_active, t.h_blank, t.h_front, t.h_sync);
    const drawing::raster_line down = raster_of(t.v_active, t.v_blank, t.v_front, t.v_sync);
    out.begin("article", "timing");
    const std::uint32_t frame_lines = t.interlaced ? 2 * t.v_active : t.v_active;
    out.begin("h4").text(resolution_words(t.h_active, frame_lines, t.interlaced) + ", " + rate_words(t.refresh_hz()));
    out.end();
    std::string words = clock_words(t.pixel_clock_khz) + ", " + number_text(t.h_khz(), 2) + " kHz";
    append_listed(words, t.sync);
    if (t.preferred) append_listed(words, "preferred");
    if (t.vic != 0) append_listed(words, "VIC " + std::to_string(t.vic));
    if (t.dmt != 0) append_listed(words, "DMT " + hex_words(t.dmt, 2));
    append_listed(words, t.stereo);
    out.begin("p", "quiet").text(words + ", bytes ");
    link_to_bytes(out, fields, t.where.block, t.where.offset);
    out.end();
    drawing::draw_timing_raster(out, across, down);
    begin_table(out, "figures", t.interlaced ? "Pixels, and lines of one field" : "Pixels and lines");
    table_head(out, {"", "#Active", "#Front", "#Sync", "#Back", "#Total"});
    out.begin("tbody");
    write_figures(out, "Horizontal", across);
    write_figures(out, "Vertical", down);
    out.end();
    end_table(out);
    out.end();
}

void write_raster_key(markup_writer& out) {
    out.begin("ul", "key").attribute("aria-hidden", "true");
    for (const auto& [class_name, words] : {std::pair{"active", "active"}, std::pair{"front", "front porch"},
                                            std::pair{"sync", "sync"}, std::pair{"back", "back porch"}}) {
        out.begin("li");
        out.begin("span", "swatch " + std::string(class_name)).end();
        out.text(words).end();
    }
    out.end();
}

} // namespace

void write_timings(markup_writer& out, const page_source& source, const field_map& fields) {
    const facts::display_facts& facts = source.facts;
    begin_section(out, "timings", "Timings");
    if (facts.modes.empty() && facts.detailed_timings.empty()) {
        out.element("p", "quiet", "The EDID states no timings.");
        return out.end();
    }
    if (facts.limits) {
        out.begin("dl", "facts");
        describe(out, "Range limits", range_words(*facts.limits));
        describe(out, "Formula", facts.limits->formula);
        out.end();
    }
    write_chart(out, facts);
    write_modes(out, facts, fields);
    if (!facts.detailed_timings.empty()) {
        out.element("h3", "Detailed timings");
        write_raster_key(out);
        out.begin("div", "timings");
        for (const facts::detailed_timing& t : facts.detailed_timings)
            write_detailed(out, t, fields);
        out.end();
    }
    out.end();
}

} // namespace desk::page
