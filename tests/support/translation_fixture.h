#pragma once

#include "edid/buffers.h"
#include "support/expect_failure.h"
#include "support/translation_panel.h"
#include "translate/decode/translation_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// For the messages of gtest.
inline void PrintTo(const descriptor_row& row, std::ostream* out) {
    *out << '(' << static_cast<int>(row.position) << ", " << std::hex << static_cast<int>(row.kind) << std::dec << ')';
}
inline bool operator==(const descriptor_row& a, const descriptor_row& b) {
    return a.position == b.position && a.kind == b.kind;
}

namespace test {

using byte_list = std::vector<std::uint8_t>;

/// Consecutive bytes from an address on.
struct bytes_at {
    std::size_t address;
    std::vector<int> bytes;
};

/// An EDID of zeros, or another one, with these bytes in it.
inline edid_buffer edid_of(std::initializer_list<bytes_at> places, edid_buffer edid = {}) {
    for (const bytes_at& place : places)
        for (std::size_t i = 0; i < place.bytes.size(); ++i)
            edid.at(place.address + i) = static_cast<std::uint8_t>(place.bytes[i]);
    return edid;
}

/// The codes of a text's bytes.
inline std::vector<int> codes_of(std::string_view text) {
    std::vector<int> codes;
    for (const char c : text)
        codes.push_back(static_cast<std::uint8_t>(c));
    return codes;
}

/// A monitor descriptor with a text, padded with a line feed and spaces.
inline std::vector<int> text_descriptor(int tag, const std::string& text) {
    std::vector<int> bytes = {0, 0, 0, tag, 0};
    for (const int code : codes_of((text + "\n            ").substr(0, 13)))
        bytes.push_back(code);
    return bytes;
}

/// A monitor descriptor with these data bytes.
inline std::vector<int> monitor_descriptor(int tag, const std::vector<int>& data) {
    std::vector<int> bytes = {0, 0, 0, tag, 0};
    bytes.insert(bytes.end(), data.begin(), data.end());
    bytes.resize(18);
    return bytes;
}

/// 1920 x 1080 at 148.5 MHz on 510 x 290 mm.
inline const std::vector<int> full_hd = {0x02, 0x3A, 0x80, 0x18, 0x71, 0x38, 0x2D, 0x40, 0x58,
                                         0x2C, 0x45, 0x00, 0xFE, 0x22, 0x11, 0x00, 0x00, 0x1E};
/// 640 x 480 at 25.17 MHz on 320 x 240 mm.
inline const std::vector<int> vga = {0xD5, 0x09, 0x80, 0xA0, 0x20, 0xE0, 0x2D, 0x10, 0x10,
                                     0x60, 0xA2, 0x00, 0x40, 0xF0, 0x10, 0x00, 0x00, 0x18};
/// The lines of these two.
inline const std::string full_hd_lines = "Pixel Clock(MHz) = 148.500\r\n"
                                         "H/V Active = 1920 / 1080\r\n"
                                         "H/V Blanking = 280 / 45\r\n"
                                         "H/V Sync Offset = 88 / 4\r\n"
                                         "H/V Sync Width = 44 / 5\r\n"
                                         "H/V Image Size(mm) = 510 / 290\r\n"
                                         "Scanning Mode = Non interlace\r\n"
                                         "Stereo = Normal display no stereo\r\n"
                                         "Sync Type = Digital Seperate\r\n"
                                         "H/V Sync Polarity = Positve/Positive";
inline const std::string vga_lines = "Pixel Clock(MHz) = 25.170\r\n"
                                     "H/V Active = 640 / 480\r\n"
                                     "H/V Blanking = 160 / 45\r\n"
                                     "H/V Sync Offset = 16 / 10\r\n"
                                     "H/V Sync Width = 96 / 2\r\n"
                                     "H/V Image Size(mm) = 320 / 240\r\n"
                                     "Scanning Mode = Non interlace\r\n"
                                     "Stereo = Normal display no stereo\r\n"
                                     "Sync Type = Digital Seperate\r\n"
                                     "H/V Sync Polarity = Negative/Negative";

/// A basic block with a timing, a name, range limits and a serial number; then a manufacturer's block.
inline edid_buffer usual_edid() {
    return edid_of({{0, {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00}},
                    {54, full_hd},
                    {72, text_descriptor(0xFC, "VELO")},
                    {90, monitor_descriptor(0xFD, {50, 75, 30, 80, 15, 0})},
                    {108, text_descriptor(0xFF, "0042")},
                    {128, {0xFF}}});
}

/// The same with a CEA 861 block, whose byte 130 is `d`.
inline edid_buffer cea_edid(int d, std::initializer_list<bytes_at> places = {}) {
    return edid_of(places, edid_of({{128, {0x02, 0x03, d, 0xF1}}}, usual_edid()));
}

/// Lines, each with its end.
inline std::string lines(std::initializer_list<std::string_view> all) {
    std::string text;
    for (const std::string_view line : all)
        text.append(line).append("\r\n");
    return text;
}

/// Block 0 or 1 as a list of bytes, eight to a line.
inline std::string list_of(const edid_buffer& edid, std::size_t block) {
    std::ostringstream text;
    text << std::hex << std::uppercase;
    for (std::size_t i = 128 * block; i < 128 * block + 128; ++i) {
        text << std::setw(2) << std::setfill('0') << static_cast<int>(edid.at(i)) << ' ';
        if (i % 8 == 7) text << "//" << i << "\r\n";
    }
    return text.str();
}

/// The rest of the first line with this label.
inline std::string value_after(std::string_view label, std::string_view text) {
    const std::string all = "\r\n" + std::string(text) + "\r\n";
    const std::size_t at = all.find("\r\n" + std::string(label));
    if (at == std::string::npos) return "(no such line)";
    const std::size_t from = at + 2 + label.size();
    return all.substr(from, all.find("\r\n", from) - from);
}

using decoding = std::function<void(std::string&)>;

/// What a decoder appends.
inline std::string text_of(const decoding& decode) {
    std::string text;
    EXPECT_EQ(failure_of([&] { decode(text); }), std::nullopt);
    return text;
}

/// What a decoder has appended when it fails.
inline std::string text_till(failure expected, const decoding& decode) {
    std::string text;
    EXPECT_EQ(failure_of([&] { decode(text); }), expected);
    return text;
}

/// The translation panel as it is when the desk starts.
class translation_fixture : public testing::Test, protected translation_panel {
protected:
    translation_fixture() {
        view.tree_edid.name = "tree_edid";
        view.fra_edid_edit.visible = false;
        hide_all();
    }

    /// The operator presses TRANS on the READ side.
    void translate(const edid_buffer& edid) {
        buffers.read_buff = edid;
        workbench.cmd_read_translate.on_click();
    }
    /// The number of the node with a key; 0: there is none.
    int number_of(std::string_view key) const {
        const auto& nodes = view.tree_edid.nodes();
        const auto node = std::find_if(nodes.begin(), nodes.end(), [&](const tree_node& n) { return n.key == key; });
        return node == nodes.end() ? 0 : static_cast<int>(node - nodes.begin()) + 1;
    }
    void click(std::string_view key) { view.tree_edid.on_node_click(number_of(key)); }
    /// What the panel shows for a node.
    std::string text_of_node(std::string_view key) {
        click(key);
        return view.txt_edid.text;
    }
};

} // namespace test
} // namespace desk
