#include "edid/facts/display_facts.h"

#include "edid/facts/block_reader.h"
#include "edid/facts/cta_blocks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>

namespace desk::facts {

namespace {

constexpr std::size_t most_blocks = 256;
constexpr std::size_t place_of_count = 126;

constexpr std::uint8_t cta_tag = 0x02;
constexpr std::uint8_t video_timing_tag = 0x10;
constexpr std::uint8_t display_id_tag = 0x70;
constexpr std::uint8_t map_tag = 0xF0;

using block_bytes = std::span<const std::uint8_t, edid_block_size>;

block_bytes block_of(std::span<const std::uint8_t> edid, std::size_t number) {
    return edid.subspan(number * edid_block_size).first<edid_block_size>();
}

/// The tag of each extension block, from byte 1 on.
void check_map(const block_reader& block, std::span<const std::uint8_t> edid) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 2.2.3";
    block.name(0, edid_block_size - 1, part::extension_header, "Block map");
    if (block.number() != 1 && block.number() != 128)
        block.find(severity::warning, 0, "A block map is neither block 1 nor block 128.", clause);
    const std::size_t first = block.number() + 1U;
    for (std::size_t i = 1; i < edid_block_size - 1; ++i) {
        const std::size_t number = first + i - 1;
        const std::uint8_t tag = (number + 1) * edid_block_size <= edid.size() ? edid[number * edid_block_size] : 0;
        if (block[i] == tag) continue;
        block.find(severity::warning, i,
                   "The block map does not state the tag of block " + std::to_string(number) + ".", clause);
        return;
    }
}

void read_extension(const block_reader& block, std::span<const std::uint8_t> edid) {
    switch (block[0]) {
    case cta_tag:
        return read_cta_block(block);
    case display_id_tag:
        return read_display_id_block(block);
    case video_timing_tag:
        return read_video_timing_block(block);
    case map_tag:
        return check_map(block, edid);
    default:
        block.name(0, edid_block_size - 1, part::unknown, "Extension block of an unknown kind");
        block.keep_unknown(0, edid_block_size - 1, "extension block");
        block.find(severity::note, 0, "The tag " + std::to_string(block[0]) + " of an extension block is not known.",
                   "VESA E-EDID 1.4, 2.2.2");
    }
}

void check_block_sum(const block_reader& block) {
    unsigned sum = 0;
    for (std::size_t i = 0; i < edid_block_size; ++i)
        sum += block[i];
    const bool right = (sum & 255) == 0;
    block.facts.checksums.push_back(right);
    block.name(edid_block_size - 1, 1, part::checksum, "Checksum");
    if (!right)
        block.find(severity::error, edid_block_size - 1,
                   "The checksum of block " + std::to_string(block.number()) + " is wrong.", "VESA E-EDID 1.4, 3.11");
}

/// Makes the names of a block's bytes, from `first` on, cover each byte once.
void cover_block(std::vector<named_bytes>& names, std::size_t first, std::uint16_t number) {
    std::vector<named_bytes> covered(names.begin() + static_cast<std::ptrdiff_t>(first), names.end());
    const auto precedes = [](const named_bytes& a, const named_bytes& b) { return a.where.offset < b.where.offset; };
    if (!std::is_sorted(covered.begin(), covered.end(), precedes))
        std::stable_sort(covered.begin(), covered.end(), precedes);
    names.resize(first);
    std::size_t next = 0;
    const auto add = [&](std::size_t begin, std::size_t end, part what, std::string_view name) {
        names.push_back(
            {{number, static_cast<std::uint8_t>(begin), static_cast<std::uint8_t>(end - begin)}, what, name});
    };
    for (const named_bytes& n : covered) {
        const std::size_t begin = std::max<std::size_t>(n.where.offset, next);
        const std::size_t end = n.where.offset + std::size_t{n.where.length};
        if (end <= begin) continue;
        if (begin > next) add(next, begin, part::unknown, "Unknown");
        add(begin, end, n.what, n.name);
        next = end;
    }
    if (next < edid_block_size) add(next, edid_block_size, part::unknown, "Unknown");
}

void read_block(display_facts& facts, std::span<const std::uint8_t> edid, std::size_t number) {
    const std::size_t first_name = facts.bytes.size();
    const block_reader block(facts, block_of(edid, number), number);
    if (number == 0)
        read_base_block(block);
    else
        read_extension(block, edid);
    check_block_sum(block);
    cover_block(facts.bytes, first_name, block.number());
}

/// The number of extension blocks that the HDMI Forum's override in the first data block of block 1 states; 0: none.
std::size_t overridden_count(std::span<const std::uint8_t> edid) {
    if (edid.size() < 2 * edid_block_size) return 0;
    const block_bytes first = block_of(edid, 1);
    const bool is_override = first[0] == cta_tag && first[2] >= 7 && first[4] == 0xE2 && first[5] == 0x78;
    return is_override ? first[6] : 0;
}

void check_extent(display_facts& facts, std::span<const std::uint8_t> edid) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 2.2";
    const auto find = [&](severity level, std::size_t block, std::size_t offset, std::string text) {
        facts.findings.push_back(
            {level, static_cast<std::uint16_t>(block), static_cast<std::uint8_t>(offset), std::move(text), clause});
    };
    const std::size_t blocks = edid.size() / edid_block_size;
    if (edid.size() % edid_block_size != 0)
        find(severity::error, std::min(blocks, most_blocks - 1), 0,
             std::to_string(edid.size()) + " bytes are no whole number of blocks of 128.");
    if (blocks > most_blocks) find(severity::error, 0, 0, "There are more than 256 blocks.");
    if (blocks == 0) return;
    if (blocks > 2 && edid[18] == 1 && edid[19] == 3 && edid[edid_block_size] != map_tag)
        find(severity::warning, 1, 0, "More than two blocks need a block map in block 1.");
    const std::size_t overriding = overridden_count(edid);
    const std::size_t stated = overriding != 0 ? overriding : edid[place_of_count];
    if (stated + 1 == blocks) return;
    find(stated + 1 > blocks ? severity::error : severity::warning, 0, place_of_count,
         "The base block counts " + std::to_string(stated) + " extension blocks, but there are " +
             std::to_string(blocks - 1) + ".");
}

/// What of a mode is outside the range limits; null if nothing is.
const char* outside(const range_limits& r, const video_mode& mode) {
    constexpr double rounding = 0.5;
    const double max_mhz = r.exact_max_clock_mhz.value_or(r.max_clock_mhz.value_or(0));
    if (mode.refresh_hz < r.min_v_hz - rounding || mode.refresh_hz > r.max_v_hz + rounding) return "refresh rate";
    if (mode.h_khz < r.min_h_khz - rounding || mode.h_khz > r.max_h_khz + rounding) return "line rate";
    if (r.max_clock_mhz && mode.pixel_clock_khz / 1000.0 > max_mhz + rounding) return "pixel clock";
    return nullptr;
}

/// Checks the modes of the base block.
void check_against_limits(display_facts& facts) {
    if (!facts.limits) return;
    for (const video_mode& mode : facts.modes) {
        if (mode.where.block != 0) continue;
        const char* const what = outside(*facts.limits, mode);
        if (what == nullptr) continue;
        facts.findings.push_back({severity::warning, 0, mode.where.offset,
                                  "The " + std::string(what) + " of the " + std::string(name_of(mode.source)) + " " +
                                      std::to_string(mode.width) + "x" + std::to_string(mode.height) + " at " +
                                      std::to_string(std::lround(mode.refresh_hz)) + " Hz is outside the range limits.",
                                  "VESA E-EDID 1.4, 3.10.3.3"});
    }
}

} // namespace

display_facts read_display_facts(std::span<const std::uint8_t> edid) {
    constexpr std::size_t names_of_block = 32;
    display_facts facts;
    facts.size = edid.size();
    const std::size_t blocks = std::min(edid.size() / edid_block_size, most_blocks);
    facts.bytes.reserve(blocks * names_of_block);
    facts.modes.reserve(64);
    facts.detailed_timings.reserve(8);
    facts.cta.video.reserve(32);
    check_extent(facts, edid);
    for (std::size_t number = 0; number < blocks; ++number)
        read_block(facts, edid, number);
    check_data_blocks(facts);
    check_against_limits(facts);
    const auto precedes = [](const finding& a, const finding& b) { return a.block < b.block; };
    if (!std::is_sorted(facts.findings.begin(), facts.findings.end(), precedes))
        std::stable_sort(facts.findings.begin(), facts.findings.end(), precedes);
    return facts;
}

std::string_view name_of(severity level) {
    constexpr std::array<std::string_view, 3> names = {"note", "warning", "error"};
    return names[static_cast<std::size_t>(level)];
}

} // namespace desk::facts
