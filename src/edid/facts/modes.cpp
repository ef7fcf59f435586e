#include "edid/facts/modes.h"

#include "edid/facts/dmt_table.h"
#include "edid/facts/vic_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <tuple>

namespace desk::facts {

namespace {

/// Sets the figures of a mode from its totals.
void set_rates(video_mode& mode, double pixel_clock_khz, std::uint32_t h_total, std::uint32_t v_total) {
    mode.pixel_clock_khz = static_cast<std::uint32_t>(std::lround(pixel_clock_khz));
    if (h_total == 0 || v_total == 0) return;
    mode.h_khz = pixel_clock_khz / h_total;
    mode.refresh_hz = mode.h_khz * 1000 / v_total * (mode.interlaced ? 2 : 1);
}

/// The mode of a timing from a table.
template <class Timing>
video_mode mode_of(const Timing& timing, place where, mode_source source) {
    video_mode mode;
    mode.where = where;
    mode.source = source;
    mode.width = timing.h_active;
    mode.height = timing.v_active;
    if constexpr (requires { timing.interlaced; }) mode.interlaced = timing.interlaced;
    set_rates(mode, timing.pixel_clock_khz, timing.h_total, timing.v_total);
    return mode;
}

/// A timing that VESA's list lacks.
struct other_timing {
    std::uint16_t h_active, v_active, h_total, v_total;
    std::uint32_t pixel_clock_khz;
};
constexpr other_timing ibm_720x400_70 = {720, 400, 900, 449, 28320};
constexpr other_timing ibm_720x400_88 = {720, 400, 900, 449, 35500};
constexpr other_timing apple_640x480_67 = {640, 480, 864, 525, 30240};
constexpr other_timing apple_832x624_75 = {832, 624, 1152, 667, 57284};
constexpr other_timing apple_1152x870_75 = {1152, 870, 1456, 915, 100000};

/// The timings of bytes 35 to 37, from bit 7 of the first byte on: VESA's ids, or one of the others.
struct established_timing {
    std::uint8_t dmt;
    const other_timing* other;
};
constexpr std::array<established_timing, 17> established_timings = {{
    {0, &ibm_720x400_70},
    {0, &ibm_720x400_88},
    {0x04, nullptr},
    {0, &apple_640x480_67},
    {0x05, nullptr},
    {0x06, nullptr},
    {0x08, nullptr},
    {0x09, nullptr},
    {0x0A, nullptr},
    {0x0B, nullptr},
    {0, &apple_832x624_75},
    {0x0F, nullptr},
    {0x10, nullptr},
    {0x11, nullptr},
    {0x12, nullptr},
    {0x24, nullptr},
    {0, &apple_1152x870_75},
}};

/// The ids of the established timings III, from bit 7 of the first byte on.
constexpr std::array<std::uint8_t, 44> established_iii_ids = {
    0x01, 0x02, 0x03, 0x07, 0x0E, 0x0C, 0x13, 0x15, 0x16, 0x17, 0x18, 0x19, 0x20, 0x21, 0x23,
    0x25, 0x27, 0x2E, 0x2F, 0x30, 0x31, 0x29, 0x2A, 0x2B, 0x2C, 0x39, 0x3A, 0x3B, 0x3C, 0x33,
    0x34, 0x35, 0x36, 0x37, 0x3E, 0x3F, 0x41, 0x42, 0x44, 0x45, 0x46, 0x47, 0x49, 0x4A};

bool bit_in_row(const block_reader& block, std::size_t offset, std::size_t index) {
    return block.bit(offset + index / 8, 7 - static_cast<unsigned>(index % 8));
}

void add_formula_mode(const block_reader& block, video_mode mode, const formula_timing& timing,
                      std::string_view formula) {
    mode.formula = formula;
    set_rates(mode, timing.pixel_clock_khz, timing.h_total, timing.v_total);
    block.facts.modes.push_back(mode);
}

/// The id whose figures a computed timing has; 0 if there is none.
std::uint8_t dmt_of_formula(std::uint32_t width, std::uint32_t height, const formula_timing& timing) {
    detailed_timing t;
    t.pixel_clock_khz = static_cast<std::uint32_t>(timing.pixel_clock_khz);
    t.h_active = width;
    t.h_blank = timing.h_total - width;
    t.v_active = height;
    t.v_blank = timing.v_total - height;
    return dmt_of(t);
}

} // namespace

void add_dmt_mode(const block_reader& block, place where, mode_source source, std::uint8_t dmt) {
    const dmt_timing* const timing = timing_of_dmt(dmt);
    if (timing == nullptr) return;
    video_mode mode = mode_of(*timing, where, source);
    mode.reduced_blanking = timing->reduced_blanking;
    mode.dmt = dmt;
    block.facts.modes.push_back(mode);
}

void add_vic_mode(const block_reader& block, place where, mode_source source, std::uint8_t vic, bool native) {
    const vic_timing* const timing = timing_of_vic(vic);
    if (timing == nullptr) return;
    video_mode mode = mode_of(*timing, where, source);
    mode.native = native;
    mode.vic = vic;
    block.facts.modes.push_back(mode);
}

void add_hdmi_vic_mode(const block_reader& block, place where, mode_source source, std::uint8_t hdmi_vic) {
    const hdmi_vic_timing* const timing = timing_of_hdmi_vic(hdmi_vic);
    if (timing != nullptr) block.facts.modes.push_back(mode_of(*timing, where, source));
}

void add_cvt_mode(const block_reader& block, place where, mode_source source, std::uint32_t width, std::uint32_t height,
                  unsigned rate_hz, blanking kind, bool preferred) {
    video_mode mode;
    mode.where = where;
    mode.source = source;
    mode.width = width;
    mode.height = height;
    mode.reduced_blanking = kind != blanking::normal;
    mode.native = preferred;
    const formula_timing timing = cvt_timing(width, height, rate_hz, kind);
    mode.dmt = dmt_of_formula(width, height, timing);
    add_formula_mode(block, mode, timing, "CVT");
}

void add_detailed_mode(const block_reader& block, const detailed_timing& timing) {
    video_mode mode;
    mode.where = timing.where;
    mode.source = timing.display_id ? mode_source::display_id : mode_source::detailed;
    mode.width = timing.h_active;
    mode.height = timing.v_active * (timing.interlaced ? 2 : 1);
    mode.interlaced = timing.interlaced;
    mode.native = timing.preferred;
    mode.pixel_clock_khz = timing.pixel_clock_khz;
    mode.h_khz = timing.h_khz();
    mode.refresh_hz = timing.refresh_hz();
    mode.vic = timing.vic;
    mode.dmt = timing.dmt;
    block.facts.modes.push_back(mode);
}

void read_standard_code(const block_reader& block, std::size_t offset) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.9";
    const unsigned first = block[offset];
    const unsigned second = block[offset + 1];
    if (first == 1 && second == 1) return;
    if (first == 0) {
        block.find(severity::warning, offset,
                   second == 0 ? "An unused standard timing is 00 00 instead of 01 01."
                               : "A standard timing begins with the reserved byte 00.",
                   clause);
        return;
    }
    const bool square = block.facts.version == 1 && block.facts.revision < 3;
    const std::uint32_t width = (first + 31) * 8;
    const std::array<std::uint32_t, 4> heights = {square ? width : width * 10 / 16, width * 3 / 4, width * 4 / 5,
                                                  width * 9 / 16};
    const std::uint32_t height = heights[second >> 6];
    const unsigned rate_hz = (second & 63) + 60;
    const place where = block.at(offset, 2);
    if (const dmt_timing* const listed = standard_dmt(width, height, rate_hz)) {
        add_dmt_mode(block, where, mode_source::standard, listed->id);
        return;
    }
    video_mode mode;
    mode.where = where;
    mode.source = mode_source::standard;
    mode.width = width;
    mode.height = height;
    if (block.facts.version == 1 && block.facts.revision >= 4)
        add_formula_mode(block, mode, cvt_timing(width, height, rate_hz, blanking::normal), "CVT");
    else
        add_formula_mode(block, mode, gtf_timing(width, height, rate_hz), "GTF");
}

void read_cvt_code(const block_reader& block, std::size_t offset) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.10.3.8";
    constexpr std::array<unsigned, 5> rates = {50, 60, 75, 85, 60};
    struct ratio {
        std::uint32_t across, down;
    };
    constexpr std::array<ratio, 4> ratios = {{{4, 3}, {16, 9}, {16, 10}, {15, 9}}};
    const std::uint32_t low = block[offset];
    const std::uint32_t second = block[offset + 1];
    const std::uint32_t third = block[offset + 2];
    if (low == 0 && second == 0 && third == 0) return;
    if ((second & 0x03) != 0 || (third & 0x80) != 0)
        block.find(severity::warning, offset, "A CVT code has reserved bits set.", clause);
    if ((third & 0x1F) == 0) block.find(severity::warning, offset + 2, "A CVT code names no rate.", clause);
    const std::uint32_t height = ((low | (second & 0xF0) << 4) + 1) * 2;
    const ratio aspect = ratios[second >> 2 & 3];
    const std::uint32_t width = height * aspect.across / aspect.down / 8 * 8;
    // bit 4 is 50 Hz, bit 1 85 Hz, bit 0 60 Hz with reduced blanking
    for (unsigned i = 0; i < rates.size(); ++i) {
        if ((third >> (4 - i) & 1) == 0) continue;
        const bool preferred = rates[third >> 5 & 3] == rates[i];
        add_cvt_mode(block, block.at(offset, 3), mode_source::cvt_code, width, height, rates[i],
                     i == 4 ? blanking::reduced : blanking::normal, preferred);
    }
}

void read_established(const block_reader& block, std::size_t offset) {
    for (std::size_t i = 0; i < established_timings.size(); ++i) {
        if (!bit_in_row(block, offset, i)) continue;
        const established_timing& timing = established_timings[i];
        const place where = block.at(offset + i / 8, 1);
        if (timing.other != nullptr)
            block.facts.modes.push_back(mode_of(*timing.other, where, mode_source::established));
        else
            add_dmt_mode(block, where, mode_source::established, timing.dmt);
    }
}

void read_established_iii(const block_reader& block, std::size_t offset) {
    for (std::size_t i = 0; i < established_iii_ids.size(); ++i)
        if (bit_in_row(block, offset, i))
            add_dmt_mode(block, block.at(offset + i / 8, 1), mode_source::established_iii, established_iii_ids[i]);
}

const video_mode* best_mode(const display_facts& facts) {
    // native before others, then by pixels, then by rate
    const auto rank = [](const video_mode& m) {
        return std::tuple(m.native, std::uint64_t{m.width} * m.height, m.refresh_hz);
    };
    const auto best = std::max_element(facts.modes.begin(), facts.modes.end(),
                                       [&](const video_mode& a, const video_mode& b) { return rank(a) < rank(b); });
    return best == facts.modes.end() ? nullptr : &*best;
}

std::string_view name_of(mode_source source) {
    constexpr std::array<std::string_view, 9> names = {
        "established timing", "established timing III",       "standard timing",   "CVT code", "detailed timing",
        "video data block",   "YCbCr 4:2:0 video data block", "HDMI vendor block", "DisplayID"};
    return names[static_cast<std::size_t>(source)];
}

} // namespace desk::facts
