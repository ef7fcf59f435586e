#include "edid/facts/dmt_table.h"
#include "edid/facts/modes.h"
#include "edid/facts/vic_table.h"

#include <array>
#include <string>

namespace desk::facts {

namespace {

constexpr std::string_view clause_of_timing = "VESA E-EDID 1.4, 3.10.2";

/// The total lines of a field or frame. An interlaced field has a half more, except in format 39.
double lines_of(const detailed_timing& t) { return t.v_active + t.v_blank + (t.interlaced && t.vic != 39 ? 0.5 : 0.0); }

/// By bits 6, 5 and 0 of the flags.
std::string_view stereo_of(unsigned flags) {
    constexpr std::array<std::string_view, 8> names = {"",
                                                       "",
                                                       "field sequential, right image first",
                                                       "two-way interleaved, right image on even lines",
                                                       "field sequential, left image first",
                                                       "two-way interleaved, left image on even lines",
                                                       "four-way interleaved",
                                                       "side by side interleaved"};
    return names[(flags >> 4 & 6) | (flags & 1)];
}

void read_sync(detailed_timing& timing, unsigned flags) {
    constexpr std::array<std::string_view, 4> kinds = {"analog composite", "bipolar analog composite",
                                                       "digital composite", "digital separate"};
    const unsigned kind = flags >> 3 & 3;
    timing.sync = kinds[kind];
    if (kind == 3) timing.v_sync_positive = (flags >> 2 & 1) != 0;
    if (kind >= 2) timing.h_sync_positive = (flags >> 1 & 1) != 0;
}

bool is_filled_with_ones(const block_reader& block, std::size_t offset) {
    for (std::size_t i = offset; i < offset + 18; ++i)
        if (block[i] != 1) return false;
    return true;
}

/// The first thing that makes a timing impossible; empty if it is possible.
std::string fault_of(const detailed_timing& t) {
    if (t.h_active == 0 || t.v_active == 0) return "has no active pixels";
    if (t.h_blank == 0) return "has no horizontal blanking";
    if (t.v_blank == 0) return "has no vertical blanking";
    if (t.h_sync == 0) return "has a horizontal sync pulse without width";
    if (t.v_sync == 0) return "has a vertical sync pulse without width";
    if (t.h_front + t.h_sync > t.h_blank) return "has a horizontal sync pulse that ends after the blanking";
    if (t.v_front + t.v_sync > t.v_blank) return "has a vertical sync pulse that ends after the blanking";
    const double rate = t.refresh_hz();
    if (rate < 10 || rate > 1000) return "has a refresh rate of " + std::to_string(rate) + " Hz";
    return "";
}

void check_size(const block_reader& block, const detailed_timing& t) {
    const display_facts& f = block.facts;
    if (!f.width_cm || !f.height_cm || t.width_mm == 0 || t.height_mm == 0 || t.display_id) return;
    const auto too_large = [](std::uint32_t mm, int cm) { return static_cast<int>(mm) > cm * 10 + 10; };
    if (too_large(t.width_mm, *f.width_cm) || too_large(t.height_mm, *f.height_cm))
        block.find(severity::warning, t.where.offset + 12U,
                   "The image of a detailed timing is " + std::to_string(t.width_mm) + " mm by " +
                       std::to_string(t.height_mm) + " mm, larger than the display.",
                   clause_of_timing);
}

} // namespace

double detailed_timing::h_khz() const {
    const double total = h_active + h_blank;
    return total == 0 ? 0 : pixel_clock_khz / total;
}

double detailed_timing::refresh_hz() const {
    const double lines = lines_of(*this);
    return lines < 1 ? 0 : h_khz() * 1000 / lines;
}

void add_detailed_timing(const block_reader& block, detailed_timing timing, std::string_view clause) {
    if (const std::string fault = fault_of(timing); !fault.empty())
        block.find(severity::error, timing.where.offset,
                   "A detailed timing of " + std::to_string(timing.h_active) + "x" + std::to_string(timing.v_active) +
                       " " + fault + ".",
                   clause);
    check_size(block, timing);
    timing.vic = vic_of(timing);
    timing.dmt = dmt_of(timing);
    add_detailed_mode(block, timing);
    block.facts.detailed_timings.push_back(timing);
}

void read_detailed_timing(const block_reader& block, std::size_t offset, bool preferred) {
    block.name(offset, 18, part::detailed, "Detailed timing");
    if (is_filled_with_ones(block, offset)) {
        block.find(severity::warning, offset, "A detailed timing is filled with 01, as only standard timings are.",
                   clause_of_timing);
        return;
    }
    const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(block[offset + i]); };
    detailed_timing t;
    t.where = block.at(offset, 18);
    t.pixel_clock_khz = block.word(offset) * 10;
    t.h_active = byte(2) | (byte(4) & 0xF0) << 4;
    t.h_blank = byte(3) | (byte(4) & 0x0F) << 8;
    t.v_active = byte(5) | (byte(7) & 0xF0) << 4;
    t.v_blank = byte(6) | (byte(7) & 0x0F) << 8;
    t.h_front = byte(8) | (byte(11) & 0xC0) << 2;
    t.h_sync = byte(9) | (byte(11) & 0x30) << 4;
    t.v_front = byte(10) >> 4 | (byte(11) & 0x0C) << 2;
    t.v_sync = (byte(10) & 0x0F) | (byte(11) & 0x03) << 4;
    t.width_mm = byte(12) | (byte(14) & 0xF0) << 4;
    t.height_mm = byte(13) | (byte(14) & 0x0F) << 8;
    t.h_border = byte(15);
    t.v_border = byte(16);
    t.interlaced = block.bit(offset + 17, 7);
    t.stereo = stereo_of(byte(17));
    t.preferred = preferred;
    read_sync(t, byte(17));
    add_detailed_timing(block, t, clause_of_timing);
}

} // namespace desk::facts
