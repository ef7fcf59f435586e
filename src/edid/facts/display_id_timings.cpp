#include "edid/facts/display_id.h"
#include "edid/facts/modes.h"

#include <array>
#include <string>

namespace desk::facts {

namespace {

constexpr std::string_view clause_of_timings = "VESA DisplayID 2.0, 4";

/// 15 bits plus 1.
std::uint32_t figure(const payload& data, std::size_t i) { return (data.word(i) & 0x7FFF) + 1; }

std::string_view stereo_by_code(unsigned code) {
    constexpr std::array<std::string_view, 4> names = {"", "stereo", "mono or stereo", ""};
    return names[code & 3];
}

/// A detailed timing of 11 bytes, in cells of 8 pixels.
void read_short_timing(const payload& data) {
    detailed_timing t;
    t.where = data.where();
    t.display_id = true;
    t.pixel_clock_khz = (data.three_bytes(0) + 1) * 10;
    t.preferred = data.bit(3, 7);
    t.stereo = stereo_by_code(data[3] >> 5);
    t.interlaced = data.bit(3, 4);
    t.h_sync_positive = data.bit(3, 3);
    t.v_sync_positive = data.bit(3, 2);
    t.h_active = 8 * ((data.word(4) & 0x1FF) + 1);
    t.h_blank = 8 * ((data[5] >> 1) + 1U);
    t.h_front = 8 * ((data[6] >> 4) + 1U);
    t.h_sync = 8 * ((data[6] & 15U) + 1);
    t.v_active = (data.word(7) & 0xFFF) + 1;
    t.v_blank = data[9] + 1U;
    t.v_front = (data[10] >> 4) + 1U;
    t.v_sync = (data[10] & 15U) + 1;
    add_detailed_timing(data.block, t, clause_of_timings);
}

/// A resolution of three bytes, by its width and an aspect ratio.
void read_type_iii(const payload& data) {
    struct ratio {
        std::uint32_t across, down;
    };
    constexpr std::array<ratio, 8> ratios = {
        {{1, 1}, {5, 4}, {4, 3}, {15, 9}, {16, 9}, {16, 10}, {64, 27}, {256, 135}}};
    const std::size_t aspect = data[0] & 15;
    if (aspect >= ratios.size()) {
        data.block.find(severity::note, data.offset(), "A short timing states no aspect ratio.", clause_of_timings);
        return;
    }
    const std::uint32_t width = 8 * (data[1] + 1U);
    const std::uint32_t height = width * ratios[aspect].down / ratios[aspect].across;
    add_cvt_mode(data.block, data.where(), mode_source::display_id, width, height, (data[2] & 127U) + 1,
                 (data[0] >> 4 & 7) == 1 ? blanking::reduced : blanking::normal, data.bit(0, 7));
}

/// The type V has six bytes before a rate of one, the type IX five.
void read_formula_timing(const payload& data, std::size_t size, bool preferred) {
    constexpr std::array<blanking, 3> kinds = {blanking::normal, blanking::reduced, blanking::reduced_2};
    const unsigned kind = size == 7 ? 2 : data[0] & 7;
    add_cvt_mode(data.block, data.where(), mode_source::display_id, data.word(size - 5) + 1, data.word(size - 3) + 1,
                 data[size - 1] + 1U, kinds[kind < kinds.size() ? kind : 2], preferred);
}

/// Codes of one or two bytes: VESA's ids, CTA-861's or HDMI's.
void read_codes(const payload& data, std::uint8_t revision) {
    const std::size_t step = (revision >> 3 & 1) != 0 ? 2 : 1;
    for (std::size_t i = 0; i + step <= data.size(); i += step) {
        const place where = data.at(i, step);
        if (step == 2 && data[i + 1] != 0) continue;
        switch (revision >> 6) {
        case 0:
            add_dmt_mode(data.block, where, mode_source::display_id, data[i]);
            break;
        case 1:
            add_vic_mode(data.block, where, mode_source::display_id, data[i], false);
            break;
        case 2:
            add_hdmi_vic_mode(data.block, where, mode_source::display_id, data[i]);
            break;
        default:
            return;
        }
    }
}

/// A bit for each code from 1 on.
template <class Add>
void read_code_bits(const payload& data, std::size_t codes, Add add) {
    for (std::size_t i = 0; i < codes && i < data.size() * 8; ++i)
        if (data.bit(i / 8, static_cast<unsigned>(i % 8))) add(data.at(i / 8, 1), static_cast<std::uint8_t>(i + 1));
}

template <class Read>
void read_each(const payload& data, std::size_t size, Read read) {
    if (data.size() % size != 0)
        data.block.find(severity::warning, data.offset(),
                        "A data block of timings of " + std::to_string(size) + " bytes each has " +
                            std::to_string(data.size()) + " bytes.",
                        clause_of_timings);
    for (std::size_t i = 0; i + size <= data.size(); i += size)
        read(data.from(i).first(size));
}

} // namespace

void read_long_timing(const payload& data, std::uint32_t khz_of_clock_step) {
    detailed_timing t;
    t.where = data.where();
    t.display_id = true;
    t.pixel_clock_khz = (data.three_bytes(0) + 1) * khz_of_clock_step;
    t.preferred = data.bit(3, 7);
    t.stereo = stereo_by_code(data[3] >> 5);
    t.interlaced = data.bit(3, 4);
    t.h_active = data.word(4) + 1;
    t.h_blank = data.word(6) + 1;
    t.h_front = figure(data, 8);
    t.h_sync_positive = data.bit(9, 7);
    t.h_sync = data.word(10) + 1;
    t.v_active = data.word(12) + 1;
    t.v_blank = data.word(14) + 1;
    t.v_front = figure(data, 16);
    t.v_sync_positive = data.bit(17, 7);
    t.v_sync = data.word(18) + 1;
    add_detailed_timing(data.block, t, clause_of_timings);
}

bool read_display_id_timings(std::uint8_t tag, std::uint8_t revision, const payload& data) {
    const auto add_dmt = [&](place where, std::uint8_t id) {
        add_dmt_mode(data.block, where, mode_source::display_id, id);
    };
    const auto add_vic = [&](place where, std::uint8_t vic) {
        add_vic_mode(data.block, where, mode_source::display_id, vic, false);
    };
    switch (tag) {
    case 0x03:
        read_each(data, 20, [](const payload& one) { read_long_timing(one, 10); });
        return true;
    case 0x22:
        read_each(data, 20, [](const payload& one) { read_long_timing(one, 1); });
        return true;
    case 0x04:
        read_each(data, 11, read_short_timing);
        return true;
    case 0x05:
        read_each(data, 3, read_type_iii);
        return true;
    case 0x11:
        read_each(data, 7, [](const payload& one) { read_formula_timing(one, 7, one.bit(0, 7)); });
        return true;
    case 0x24:
        read_each(data, 6, [](const payload& one) { read_formula_timing(one, 6, false); });
        return true;
    case 0x06:
    case 0x23:
        read_codes(data, revision);
        return true;
    case 0x07:
        read_code_bits(data, 80, add_dmt);
        return true;
    case 0x08:
        read_code_bits(data, 64, add_vic);
        return true;
    default:
        return false;
    }
}

} // namespace desk::facts
