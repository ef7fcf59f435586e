#include "report/page/display_page.h"

#include "report/page/sections.h"
#include "report/page/words.h"

#include <array>
#include <utility>

namespace desk::page {

namespace {

void write_navigation(markup_writer& out) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 8> entries = {{{"findings", "Findings"},
                                                                                       {"colour", "Colour"},
                                                                                       {"timings", "Timings"},
                                                                                       {"audio", "Audio"},
                                                                                       {"abilities", "HDMI and HDR"},
                                                                                       {"features", "Features"},
                                                                                       {"bytes", "Bytes"},
                                                                                       {"desk", "Desk report"}}};
    out.begin("nav").attribute("aria-label", "Sections");
    out.begin("a", "up").attribute("href", "index.html").text("All displays").end();
    for (const auto& [id, words] : entries)
        link_to(out, id, words);
    out.end();
}

} // namespace

void append_display_page(std::string& out_text, const page_source& source) {
    constexpr std::size_t usual_size = 64 * std::size_t{1024};
    out_text.reserve(out_text.size() + usual_size);
    markup_writer out(out_text);
    const field_map fields(source.facts);
    begin_page(out, model_words(source.facts) + " - " + maker_words(source.facts), "display", false);
    write_navigation(out);
    out.begin("main");
    write_glance(out, source);
    write_findings(out, source, fields);
    write_color(out, source);
    write_timings(out, source, fields);
    write_sound(out, source, fields);
    write_abilities(out, source);
    write_features(out, source);
    write_bytes(out, source, fields);
    write_desk_report(out, source);
    out.end();
    std::string note(source.file_name);
    if (!source.sha256.empty()) note += " \xC2\xB7 SHA-256 " + std::string(source.sha256);
    end_page(out, note + " \xC2\xB7 edid_report " + std::string(source.version), false);
}

} // namespace desk::page
