#include "drawing/display_outline.h"
#include "report/page/sections.h"
#include "report/page/words.h"

#include <algorithm>

namespace desk::page {

namespace {

/// A sign of state in the head of the page: its words say it too, so the colour is no information of its own.
void write_chip(markup_writer& out, std::string_view class_name, std::string_view id, std::string_view words) {
    out.begin("li");
    out.begin("a", "chip " + std::string(class_name)).attribute("href", "#" + std::string(id)).text(words).end();
    out.end();
}

void write_chips(markup_writer& out, const page_source& source) {
    const finding_counts counts = count_findings(source.facts);
    out.begin("ul", "chips");
    if (counts.errors > 0) write_chip(out, "error", "findings", count_words(counts.errors, "error"));
    if (counts.warnings > 0) write_chip(out, "warning", "findings", count_words(counts.warnings, "warning"));
    if (counts.notes > 0) write_chip(out, "note", "findings", count_words(counts.notes, "note"));
    if (counts.errors + counts.warnings + counts.notes == 0) write_chip(out, "good", "findings", "No findings");
    if (source.desk.failure)
        write_chip(out, "error", "desk", "The desk ends with error " + std::to_string(*source.desk.failure));
    else
        write_chip(out, "good", "desk", "Complete desk report");
    out.end();
}

std::string structure_words(const facts::display_facts& facts) {
    std::string words;
    if (facts.has_base_block) words = "Version " + std::to_string(facts.version) + "." + std::to_string(facts.revision);
    append_listed(words, count_words(facts.size, "byte"));
    const auto wrong = static_cast<std::size_t>(std::count(facts.checksums.begin(), facts.checksums.end(), false));
    if (!facts.checksums.empty())
        append_listed(words, wrong == 0 ? "checksums correct" : count_words(wrong, "checksum") + " wrong");
    return words;
}

std::string serial_words(const facts::display_facts& facts) {
    std::string words = facts.serial_text;
    if (facts.serial_number) append_listed(words, std::to_string(*facts.serial_number));
    return words;
}

} // namespace

void describe(markup_writer& out, std::string_view term, std::string_view words) {
    if (words.empty()) return;
    out.element("dt", term);
    out.element("dd", words);
}

void write_glance(markup_writer& out, const page_source& source) {
    const facts::display_facts& facts = source.facts;
    const auto size = size_of_image(facts);
    out.markup("\n");
    out.begin("header", "glance");
    out.begin("div", "words");
    out.element("p", "maker", maker_words(facts));
    out.element("h1", model_words(facts));
    write_chips(out, source);
    out.begin("dl", "facts");
    if (const facts::video_mode* best = best_mode(facts)) describe(out, "Best mode", mode_words(*best));
    if (size) describe(out, "Size", size_words(*size));
    if (!size && facts.aspect) describe(out, "Aspect ratio", drawing::number_text(*facts.aspect, 2));
    describe(out, "Made", date_words(facts));
    describe(out, "Input", input_words(facts));
    describe(out, "HDR", hdr_words(facts));
    if (facts.has_base_block) describe(out, "Product code", hex_words(facts.product_code, 4));
    describe(out, "Serial number", serial_words(facts));
    describe(out, "EDID", structure_words(facts));
    out.end();
    out.end();
    if (size) {
        out.begin("figure", "outline");
        drawing::draw_display_outline(out, size->width_mm, size->height_mm);
        out.end();
    }
    out.end();
}

} // namespace desk::page
