#include "edid/facts/block_reader.h"
#include "edid/facts/descriptors.h"
#include "edid/facts/modes.h"
#include "edid/facts/pnp_ids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace desk::facts {

namespace {

bool is_1_4(const display_facts& f) { return f.version == 1 && f.revision >= 4; }

void read_header(const block_reader& block) {
    std::size_t wrong = 0;
    while (wrong < edid_header.size() && block[wrong] == edid_header[wrong])
        ++wrong;
    block.facts.has_header = wrong == edid_header.size();
    block.name(0, 8, part::header, "Header");
    if (!block.facts.has_header)
        block.find(severity::error, wrong, "The header is not 00 FF FF FF FF FF FF 00.", "VESA E-EDID 1.4, 3.3");
}

void read_maker(const block_reader& block) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.4.1";
    display_facts& f = block.facts;
    const unsigned code = block[8] * 256U + block[9];
    for (const unsigned shift : {10U, 5U, 0U})
        f.maker.push_back(static_cast<char>('@' + (code >> shift & 31)));
    const bool letters = std::all_of(f.maker.begin(), f.maker.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    f.maker_name = letters ? name_of_pnp_id(f.maker) : std::string_view();
    if (!letters || (code & 0x8000) != 0)
        block.find(severity::error, 8, "The manufacturer's id is not three letters.", clause);
    else if (f.maker_name.empty())
        block.find(severity::note, 8, "The manufacturer's id " + f.maker + " is not in the list of PNP ids.", clause);
}

void read_date(const block_reader& block) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.4.4";
    constexpr unsigned model_year = 0xFF;
    constexpr unsigned last_week = 54;
    display_facts& f = block.facts;
    const unsigned week = block[16];
    f.is_model_year = week == model_year;
    f.year = 1990 + block[17];
    if (f.is_model_year) {
        if (f.revision < 4) block.find(severity::warning, 16, "A model year needs EDID 1.4.", clause);
    } else if (week > last_week) {
        block.find(severity::warning, 16, "There is no week " + std::to_string(week) + ".", clause);
    }
    if (week != 0 && !f.is_model_year) f.week = week;
    if (is_1_4(f) && block[17] < 0x10)
        block.find(severity::warning, 17, "The year " + std::to_string(*f.year) + " is reserved.", clause);
}

void read_product(const block_reader& block) {
    display_facts& f = block.facts;
    f.version = block[18];
    f.revision = block[19];
    read_maker(block);
    f.product_code = static_cast<std::uint16_t>(block.word(10));
    const std::uint32_t serial = block.word(12) | block.word(14) << 16;
    if (serial != 0) f.serial_number = serial;
    read_date(block);
    block.name(8, 10, part::product, "Manufacturer and product");
    block.name(18, 2, part::version, "EDID version");
    if (f.version != 1 || f.revision > 4)
        block.find(severity::error, 18,
                   "There is no EDID version " + std::to_string(f.version) + "." + std::to_string(f.revision) + ".",
                   "VESA E-EDID 1.4, 3.5");
}

void read_digital_input(const block_reader& block) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.6.1";
    constexpr std::array<std::string_view, 6> interfaces = {"", "DVI", "HDMI-a", "HDMI-b", "MDDI", "DisplayPort"};
    display_facts& f = block.facts;
    const unsigned input = block[20];
    if (!is_1_4(f)) {
        if ((input & 1) != 0) f.digital_interface.interface = "DFP 1.x";
        if ((input & 0x7E) != 0) block.find(severity::warning, 20, "Reserved bits of the video input are set.", clause);
        return;
    }
    const unsigned depth = input >> 4 & 7;
    const unsigned interface = input & 15;
    if (depth >= 1 && depth <= 6) f.digital_interface.bits_per_color = static_cast<std::uint8_t>(4 + 2 * depth);
    if (depth == 7) block.find(severity::warning, 20, "The colour depth is a reserved value.", clause);
    if (interface < interfaces.size())
        f.digital_interface.interface = interfaces[interface];
    else
        block.find(severity::warning, 20, "The digital interface is a reserved value.", clause);
}

void read_analog_input(const block_reader& block) {
    constexpr std::array<std::string_view, 4> levels = {
        "0.700 V, 0.300 V, 1.000 V p-p", "0.714 V, 0.286 V, 1.000 V p-p", "1.000 V, 0.400 V, 1.400 V p-p",
        "0.700 V, 0.000 V, 0.700 V p-p"};
    analog_input& input = block.facts.analog;
    input.levels = levels[block[20] >> 5 & 3];
    input.blank_to_black = block.bit(20, 4);
    input.separate_sync = block.bit(20, 3);
    input.composite_sync = block.bit(20, 2);
    input.sync_on_green = block.bit(20, 1);
    input.serrated_sync = block.bit(20, 0);
}

void read_size(const block_reader& block) {
    display_facts& f = block.facts;
    const int width = block[21];
    const int height = block[22];
    if (width != 0 && height != 0) {
        f.width_cm = width;
        f.height_cm = height;
    } else if (width != 0 || height != 0) {
        if (is_1_4(f))
            f.aspect = width != 0 ? (width + 99) / 100.0 : 100.0 / (height + 99);
        else
            block.find(severity::warning, 21, "One of width and height is 0.", "VESA E-EDID 1.4, 3.6.2");
    }
}

void read_features(const block_reader& block) {
    constexpr std::array<std::string_view, 4> color_types = {"monochrome", "RGB", "other than RGB", ""};
    display_facts& f = block.facts;
    f.power = {block.bit(24, 7), block.bit(24, 6), block.bit(24, 5)};
    if (f.digital && is_1_4(f)) {
        f.ycbcr444 = block.bit(24, 3);
        f.ycbcr422 = block.bit(24, 4);
    } else {
        f.color_type = color_types[block[24] >> 3 & 3];
    }
    f.srgb_default = block.bit(24, 2);
    f.preferred_is_native = block.bit(24, 1);
    f.continuous_frequency = block.bit(24, 0);
    if (f.version == 1 && f.revision == 3 && !f.preferred_is_native)
        block.find(severity::warning, 24, "The first detailed timing is not marked as the preferred one.",
                   "VESA E-EDID 1.3, 3.6.4");
}

void check_colors(const block_reader& block) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.7";
    const chromaticity& c = *block.facts.colors;
    for (const color_point& p : {c.red, c.green, c.blue, c.white})
        if (p.x + p.y > 1 || p.y == 0) {
            block.find(severity::warning, 25, "A colour coordinate is outside the CIE 1931 diagram.", clause);
            return;
        }
    const double doubled_area =
        (c.green.x - c.red.x) * (c.blue.y - c.red.y) - (c.blue.x - c.red.x) * (c.green.y - c.red.y);
    if (std::fabs(doubled_area) < 0.01) {
        if (block.facts.color_type != "monochrome")
            block.find(severity::warning, 25, "The three primaries form no triangle.", clause);
        return;
    }
    constexpr std::array<double, 8> srgb = {0.640, 0.330, 0.300, 0.600, 0.150, 0.060, 0.3127, 0.3290};
    const std::array<double, 8> own = {c.red.x,  c.red.y,  c.green.x, c.green.y,
                                       c.blue.x, c.blue.y, c.white.x, c.white.y};
    const bool is_srgb = std::equal(srgb.begin(), srgb.end(), own.begin(),
                                    [](double a, double b) { return std::fabs(a - b) < 2.0 / 1024; });
    if (block.facts.srgb_default != is_srgb)
        block.find(is_srgb ? severity::note : severity::warning, 24,
                   is_srgb ? "The colour coordinates are those of sRGB, but the sRGB flag is not set."
                           : "The sRGB flag is set, but the colour coordinates are not those of sRGB.",
                   "VESA E-EDID 1.4, 3.6.4");
}

void read_colors(const block_reader& block) {
    bool stated = false;
    for (std::size_t i = 25; i < 35; ++i)
        stated = stated || block[i] != 0;
    if (!stated) return;
    // ten bits: the high eight in a byte of their own, the low two in one of the first two bytes
    const auto value = [&](std::size_t high, std::size_t low, unsigned shift) {
        return (block[high] * 4U + (block[low] >> shift & 3U)) / 1024.0;
    };
    block.facts.colors = {{value(27, 25, 6), value(28, 25, 4)},
                          {value(29, 25, 2), value(30, 25, 0)},
                          {value(31, 26, 6), value(32, 26, 4)},
                          {value(33, 26, 2), value(34, 26, 0)}};
    check_colors(block);
}

void read_basics(const block_reader& block) {
    display_facts& f = block.facts;
    f.digital = block.bit(20, 7);
    block.name(20, 1, part::input, "Video input");
    if (f.digital)
        read_digital_input(block);
    else
        read_analog_input(block);
    block.name(21, 2, part::features, "Size");
    read_size(block);
    block.name(23, 1, part::features, "Gamma");
    if (block[23] != 0xFF) f.gamma = (block[23] + 100) / 100.0;
    block.name(24, 1, part::features, "Features");
    read_features(block);
    block.name(25, 10, part::color, "Colour characteristics");
    read_colors(block);
}

void read_short_timings(const block_reader& block) {
    block.name(35, 3, part::established, "Established timings");
    read_established(block, 35);
    for (std::size_t offset = 38; offset < 54; offset += 2) {
        block.name(offset, 2, part::standard, "Standard timing");
        read_standard_code(block, offset);
    }
}

} // namespace

void read_base_block(const block_reader& block) {
    block.facts.has_base_block = true;
    read_header(block);
    read_product(block);
    read_basics(block);
    read_short_timings(block);
    read_descriptors(block);
    block.name(126, 1, part::extension_header, "Number of extension blocks");
}

} // namespace desk::facts
