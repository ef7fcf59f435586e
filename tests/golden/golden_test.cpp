// Compares all that the translation and the report have to say about each EDID of this folder with what stands in its
// file. README.md tells how a file is read.

#include "support/translation_desk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::translation_desk;
using lines = std::vector<std::string>;

std::string hex_digits(unsigned value, std::size_t width) {
    std::ostringstream out;
    out << std::uppercase << std::hex << value;
    std::string digits = out.str();
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
}

void add(lines& to, const lines& more) { to.insert(to.end(), more.begin(), more.end()); }

/// The Unicode characters of UTF-8 text that is well formed.
std::vector<unsigned> characters(std::string_view text) {
    std::vector<unsigned> found;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0U) == 0x80U)
            found.back() = found.back() << 6U | (byte & 0x3FU);
        else
            found.push_back(byte < 0x80 ? byte : byte & (byte < 0xE0 ? 0x1FU : 0x0FU));
    }
    return found;
}

/// A text as it stands in a file.
lines text_lines(const std::string& text) {
    lines result{""};
    const std::vector<unsigned> all = characters(text);
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i] == '\r' && i + 1 < all.size() && all[i + 1] == '\n') {
            result.emplace_back();
            ++i;
        } else if (all[i] == '\\') {
            result.back() += "\\\\";
        } else if (all[i] < 0x20 || all[i] > 0x7E) {
            result.back() += "\\u" + hex_digits(all[i], 4);
        } else {
            result.back() += static_cast<char>(all[i]);
        }
    }
    for (std::string& line : result)
        line = "| " + line + "$";
    result.emplace_back("end");
    return result;
}

std::string bytes_text(unsigned first, unsigned last, const edid_buffer& edid) {
    std::string text;
    for (unsigned i = first; i <= last; ++i) {
        text += hex_digits(edid.at(i), 2) + " ";
        if (i % 8 == 7) text += "//" + hex_digits(i, 1) + "\r\n";
    }
    return text;
}

std::string headings_text() {
    const auto line_ends = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "\r\n";
        return text;
    };
    return "--- Established Timing I ---" + line_ends(11) + "--- Established Timing II ---" + line_ends(11) +
           "--- Manufacturer Timing ---" + line_ends(1);
}

/// One file: its EDID, and the lines that must come, without remarks and with its short forms written out.
struct golden_file {
    edid_buffer edid{};
    lines expected;

    explicit golden_file(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        std::size_t at = 0;
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("| ") || line == "end") {
                expected.push_back(line);
            } else if (line.starts_with("bytes ")) {
                std::istringstream bytes(line.substr(line.find(':') + 1));
                for (unsigned byte = 0; bytes >> std::hex >> byte; ++at)
                    edid.at(at) = static_cast<std::uint8_t>(byte);
            } else if (!line.empty() && line.front() != '#') {
                add_line(line);
            }
        }
        if (at != edid.size()) throw std::runtime_error(path.string() + " holds no EDID");
    }

private:
    void add_line(std::string line) {
        if (line.starts_with("node ")) line = "node " + line.substr(line.find_first_not_of(' ', 5));
        std::istringstream words(line);
        std::string kind;
        std::string key;
        std::string how;
        words >> kind >> key >> how;
        if (kind == "click" && how == "the") {
            expected.push_back("click " + key + " ok");
            std::string what;
            words >> what;
            unsigned first = 0;
            unsigned last = 0;
            std::string to;
            words >> first >> to >> last;
            add(expected, text_lines(what == "headings" ? headings_text() : bytes_text(first, last, edid)));
        } else if (kind == "click" && how == "empty") {
            expected.push_back("click " + key + " ok");
            add(expected, text_lines(""));
        } else {
            expected.push_back(line);
        }
    }
};

std::string outcome(const std::string& what, const std::optional<runtime_failure>& failed) {
    return what + (failed ? " fatal " + std::to_string(failed->number()) : " ok");
}

std::string yes_or_no(bool value) { return value ? "yes" : "no"; }

lines tables_of(const translation_desk& d) {
    const translation_tables& t = d.tables;
    std::string map = "map";
    for (const descriptor_row& row : t.descriptor_map)
        map += " " + std::to_string(row.position) + ":" + hex_digits(row.kind, 2);
    std::string blocks = "blocks";
    for (const std::uint8_t address : t.data_block_addr)
        blocks += " " + std::to_string(address);
    return {map, "start " + std::to_string(t.descriptor_start), blocks, "offset " + std::to_string(t.cea_dtd_offset),
            std::string("cea ") + (t.is_cea_block1 ? "true" : "false")};
}

lines nodes_of(const translation_desk& d) {
    lines result;
    for (const tree_node& n : d.view.tree_edid.nodes()) {
        const std::string parent = n.parent == 0 ? "-" : d.view.tree_edid.node(n.parent).key;
        result.push_back("node " + n.key + " parent=" + parent + " expanded=" + yes_or_no(n.expanded) +
                         " bold=" + yes_or_no(n.bold) + " title=" + n.title);
    }
    return result;
}

/// What stands over the text.
lines shown_over_the_text(translation_desk& d) {
    lines result;
    translation_frame& v = d.view;
    const auto visible = [](const control& c) { return c.visible.get(); };
    const auto boxes = std::count_if(v.chk_established.begin(), v.chk_established.end(), visible);
    if (boxes > 0) {
        std::string ticked = boxes == 17 ? "boxes" : "some boxes";
        for (std::size_t i = 0; i < v.chk_established.size(); ++i)
            if (v.chk_established.at(i).value == 1) ticked += " " + std::to_string(i);
        result.push_back(ticked);
    }
    const std::array<std::pair<const char*, picture*>, 11> pictures = {{{" rl", &v.pic_speaker_rl},
                                                                        {" rlc", &v.pic_speaker_rlc},
                                                                        {" rc", &v.pic_speaker_rc},
                                                                        {" rrc", &v.pic_speaker_rrc},
                                                                        {" rr", &v.pic_speaker_rr},
                                                                        {" lfe", &v.pic_speaker_lfe},
                                                                        {" fr", &v.pic_speaker_fr},
                                                                        {" frc", &v.pic_speaker_frc},
                                                                        {" fc", &v.pic_speaker_fc},
                                                                        {" flc", &v.pic_speaker_flc},
                                                                        {" fl", &v.pic_speaker_fl}}};
    std::string lit;
    for (const auto& [name, p] : pictures)
        if (p->visible) lit += name;
    if (!lit.empty()) result.push_back("pictures" + lit);
    return result;
}

/// As if the desk had just started: every control over the text is as the layout leaves it.
void hide_all(translation_desk& d) {
    for (check_box& box : d.view.chk_established)
        box.visible = false;
    d.dispatch.hide_speakers();
}

lines clicks_on(const edid_buffer& edid, int node_count) {
    lines result;
    for (int node = 1; node <= node_count; ++node) {
        translation_desk fresh;
        hide_all(fresh);
        fresh.translate(edid);
        const auto failed = fresh.click(node);
        result.push_back(outcome("click " + fresh.view.tree_edid.node(node).key, failed));
        add(result, text_lines(fresh.text()));
        if (!failed) add(result, shown_over_the_text(fresh));
    }
    return result;
}

lines report_on(const edid_buffer& edid) {
    translation_desk fresh;
    fresh.buffers.trans_buff = edid;
    std::string outcome_line;
    try {
        outcome_line = fresh.report.report_build("(date", "and time)") ? "report ok" : "report stops";
    } catch (const runtime_failure& f) {
        outcome_line = outcome("report", f);
    }
    lines result{outcome_line};
    add(result, text_lines(fresh.report.report_text));
    return result;
}

/// All that the desk has to say about an EDID, in the form of the files.
lines said_about(const edid_buffer& edid) {
    translation_desk d;
    const auto failed = d.translate(edid);
    lines result{outcome("trans", failed)};
    add(result, text_lines(d.text()));
    add(result, tables_of(d));
    add(result, nodes_of(d));
    if (!failed) add(result, clicks_on(edid, d.view.tree_edid.node_count()));
    add(result, report_on(edid));
    return result;
}

std::vector<std::filesystem::path> golden_files() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(GOLDEN_FILES))
        if (entry.path().extension() == ".txt") paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

class golden : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(golden, is_what_the_desk_says) {
    const golden_file file(GetParam());
    const lines said = said_about(file.edid);
    const std::size_t common = std::min(said.size(), file.expected.size());
    std::string last_said;
    for (std::size_t i = 0; i < common; ++i) {
        if (said[i].starts_with("click") || said[i].starts_with("report")) last_said = said[i];
        ASSERT_EQ(said[i], file.expected[i]) << "behind " << last_said;
    }
    EXPECT_EQ(said.size(), file.expected.size());
}

INSTANTIATE_TEST_SUITE_P(files, golden, testing::ValuesIn(golden_files()),
                         [](const auto& info) { return info.param.stem().string(); });

TEST(golden_folder, holds_at_least_forty_edids) { EXPECT_GE(golden_files().size(), 40U); }

} // namespace
} // namespace desk
