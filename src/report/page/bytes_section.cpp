#include "edid/format/buffer.h"
#include "report/page/field_meaning.h"
#include "report/page/sections.h"
#include "report/page/words.h"

#include <algorithm>
#include <array>
#include <vector>

namespace desk::page {

namespace {

void append_byte(std::string& text, std::uint8_t byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

/// The offsets of the lines: one column for a line of sixteen bytes, one for eight; the style shows one of them.
std::string gutters() {
    std::string markup;
    markup_writer out(markup);
    for (const auto& [class_name, step] : {std::pair{"gutter wide", 16U}, std::pair{"gutter narrow", 8U}}) {
        out.begin("div", class_name).attribute("aria-hidden", "true");
        for (unsigned offset = 0; offset < edid_block_size; offset += step) {
            std::string words;
            append_byte(words, static_cast<std::uint8_t>(offset));
            out.begin("span").text(words).end();
        }
        out.end();
    }
    return markup;
}

void write_bytes_of(markup_writer& out, const field& f, std::span<const std::uint8_t> bytes) {
    std::string words;
    for (std::size_t i = f.block * edid_block_size + f.begin; i < f.block * edid_block_size + f.end; ++i) {
        if (!words.empty()) words += ' ';
        append_byte(words, bytes[i]);
    }
    const std::string label = std::string(f.name) + ", " + range_words(f);
    out.begin("a", look_of(f.what).class_name).attribute("id", id_of_bytes(f)).attribute("href", "#" + id_of_row(f));
    out.attribute("title", label).text(words).end();
    out.text(" ");
}

void write_block(markup_writer& out, std::size_t block, std::span<const field> fields, const page_source& source) {
    static const std::string same_gutters = gutters();
    out.begin("h3").text("Block " + std::to_string(block)).end();
    out.begin("div", "block");
    out.begin("div", "dump");
    out.markup(same_gutters);
    out.begin("p", "bytes");
    for (const field& f : fields)
        write_bytes_of(out, f, source.bytes);
    out.end();
    out.end();
    begin_table(out, "fields", "Fields of block " + std::to_string(block));
    table_head(out, {"Bytes", "Field", "Meaning"});
    out.begin("tbody");
    for (const field& f : fields) {
        out.begin("tr").attribute("id", id_of_row(f));
        out.begin("td");
        std::string range = std::to_string(f.begin);
        if (f.end - f.begin > 1) range += "\xE2\x80\x93" + std::to_string(f.end - 1);
        link_to(out, id_of_bytes(f), range);
        out.end();
        out.begin("td");
        out.begin("span", "swatch " + std::string(look_of(f.what).class_name)).end();
        out.text(f.name).end();
        out.element("td", meaning_of(f, source));
        out.end();
    }
    out.end();
    end_table(out);
    out.end();
}

/// The colours of the fields that there are.
void write_legend(markup_writer& out, std::span<const field> fields) {
    std::vector<std::pair<std::string_view, std::string>> kinds;
    for (const field& f : fields) {
        const part_look& look = look_of(f.what);
        const auto found =
            std::find_if(kinds.begin(), kinds.end(), [&](const auto& k) { return k.first == look.class_name; });
        if (found == kinds.end())
            kinds.emplace_back(look.class_name, look.words);
        else if (found->second.find(look.words) == std::string::npos)
            append_listed(found->second, look.words);
    }
    out.begin("ul", "key");
    for (const auto& [class_name, words] : kinds) {
        out.begin("li");
        out.begin("span", "swatch " + std::string(class_name)).end();
        out.text(words).end();
    }
    out.end();
}

} // namespace

void write_bytes(markup_writer& out, const page_source& source, const field_map& fields) {
    begin_section(out, "bytes", "Bytes");
    out.element("p", "quiet", "Select bytes to go to their field, and a field's range to go to its bytes.");
    write_legend(out, fields.fields());
    for (auto from = fields.fields().begin(); from != fields.fields().end();) {
        const auto to =
            std::find_if(from, fields.fields().end(), [&](const field& f) { return f.block != from->block; });
        write_block(out, from->block, {from, to}, source);
        from = to;
    }
    out.end();
}

} // namespace desk::page
