// What the desk says about an EDID, in the form of the golden files.

#include "golden_file.h"
#include "support/translation_desk.h"

#include "runtime/text.h"
#include "runtime/windows_1252.h"
#include "translate/decode/data_block_table.h"

#include <string_view>

namespace desk::golden {

namespace {

using test::translation_desk;

/// The name of a kind of data block: the end of the key of its node.
std::string name_of(const data_block_row& row) {
    return std::string(row.key.substr(std::string_view("block1_db_").size()));
}

/// A text as in a file, without marks.
lines escaped(const std::string& text) {
    lines result{""};
    const std::vector<char32_t> all = characters_of(text);
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i] == '\r' && i + 1 < all.size() && all[i + 1] == '\n') {
            result.emplace_back();
            ++i;
        } else if (all[i] == '\\') {
            result.back() += "\\\\";
        } else if (all[i] < 0x20 || all[i] > 0x7E) {
            result.back() +=
                "\\u" + hex2(static_cast<std::uint8_t>(all[i] >> 8U)) + hex2(static_cast<std::uint8_t>(all[i] & 0xFFU));
        } else {
            result.back() += static_cast<char>(all[i]);
        }
    }
    return result;
}

std::string outcome(const std::optional<runtime_failure>& failed) {
    return failed ? "fatal " + std::to_string(failed->number()) : "ok";
}

std::string tables_text(const translation_tables& t) {
    std::string map;
    for (const descriptor_row& row : t.descriptor_map)
        map += (map.empty() ? "" : " ") + std::to_string(row.position) + ":" + hex2(row.kind);
    return map;
}

std::string blocks_text(const translation_tables& t) {
    std::string blocks;
    for (std::size_t i = 0; i < data_block_rows.size(); ++i)
        if (const int address = t.data_block_addr.at(i); address != 0)
            blocks += (blocks.empty() ? "" : " ") + name_of(data_block_rows.at(i)) + "=" + std::to_string(address);
    return blocks;
}

std::string shown_over_the_text(translation_desk& d) {
    const auto boxes = d.visible_boxes();
    std::string over;
    if (!boxes.empty()) {
        over = boxes.size() == d.view.chk_established.size() ? "boxes " : "some boxes ";
        const auto ticked = d.ticked_boxes();
        for (std::size_t i = 0; i < ticked.size(); ++i)
            over += (i == 0 ? "" : " ") + std::to_string(ticked[i]);
    }
    const auto pictures = d.visible_pictures();
    if (!pictures.empty()) over += "pictures";
    for (const std::string& name : pictures)
        over += " " + name;
    return over;
}

} // namespace

facts said_about(const edid_buffer& edid) {
    facts all;
    translation_desk d;
    const auto failed = d.translate(edid);
    all.texts["trans"] = {outcome(failed), escaped(d.text()), ""};
    all.values = {{"map", tables_text(d.tables)},
                  {"start", std::to_string(d.tables.descriptor_start)},
                  {"blocks", blocks_text(d.tables)},
                  {"offset", std::to_string(d.tables.cea_dtd_offset)},
                  {"cea", d.tables.is_cea_block1 ? "true" : "false"}};
    for (const tree_node& n : d.view.tree_edid.nodes()) {
        const std::string parent = n.parent == 0 ? "-" : d.view.tree_edid.node(n.parent).key;
        all.nodes.push_back({n.key, parent, n.title, n.expanded, n.bold});
    }
    for (int node = 1; !failed && node <= d.view.tree_edid.node_count(); ++node) {
        translation_desk fresh;
        fresh.hide_all();
        fresh.translate(edid);
        const auto click_failed = fresh.click(node);
        all.texts[d.view.tree_edid.node(node).key] = {outcome(click_failed), escaped(fresh.text()),
                                                      click_failed ? "" : shown_over_the_text(fresh)};
    }
    translation_desk fresh;
    fresh.buffers.trans_buff = edid;
    std::string ended;
    try {
        ended = fresh.report.report_build("(date", "and time)") ? "ok" : "stops";
    } catch (const runtime_failure& f) {
        ended = outcome(f);
    }
    all.texts["report"] = {ended, escaped(fresh.report.report_text), ""};
    return all;
}

std::vector<section> sections_of(const facts& all) {
    std::vector<section> sections;
    for (const auto& [name, value] : all.values)
        sections.push_back({name, {value}});
    sections.push_back({"nodes", {}});
    for (const shown_node& n : all.nodes)
        sections.back().all.push_back(n.key + " under " + n.parent + (n.expanded ? ", open" : "") +
                                      (n.bold ? ", bold" : "") + ": " + n.title);
    for (const auto& [name, shown] : all.texts) {
        lines text = {shown.outcome};
        for (const std::string& line : shown.text)
            text.push_back("| " + line + "$");
        text.push_back(shown.over);
        sections.push_back({"text " + name, text});
    }
    return sections;
}

} // namespace desk::golden
