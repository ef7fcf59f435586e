#include "edid/facts/descriptors.h"

#include "edid/facts/modes.h"
#include "runtime/windows_1252.h"

#include <array>
#include <string>

namespace desk::facts {

namespace {

constexpr std::array<std::size_t, 4> places = {54, 72, 90, 108};
constexpr std::size_t descriptor_size = 18;
constexpr std::string_view clause_of_descriptors = "VESA E-EDID 1.4, 3.10";

constexpr std::uint8_t tag_serial_number = 0xFF;
constexpr std::uint8_t tag_string = 0xFE;
constexpr std::uint8_t tag_limits = 0xFD;
constexpr std::uint8_t tag_name = 0xFC;
constexpr std::uint8_t tag_color_points = 0xFB;
constexpr std::uint8_t tag_standard_timings = 0xFA;
constexpr std::uint8_t tag_color_management = 0xF9;
constexpr std::uint8_t tag_cvt_codes = 0xF8;
constexpr std::uint8_t tag_established_iii = 0xF7;
constexpr std::uint8_t tag_dummy = 0x10;

bool is_detailed_timing(const block_reader& block, std::size_t offset) { return block.word(offset) != 0; }

/// A text of 13 bytes that a line feed ends, and that spaces fill up.
std::string read_text(const block_reader& block, std::size_t offset) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.10.3";
    constexpr std::size_t longest = 13;
    const std::size_t start = offset + 5;
    std::string bytes;
    std::size_t end = 0;
    bool printable = true;
    for (; end < longest && block[start + end] != '\n'; ++end) {
        const std::uint8_t c = block[start + end];
        bytes.push_back(static_cast<char>(c));
        printable = printable && c >= 0x20 && c < 0x7F;
    }
    if (!printable)
        block.find(severity::warning, start, "A text has bytes that are not printable ASCII characters.", clause);
    bool filled = true;
    for (std::size_t i = end + 1; i < longest; ++i)
        filled = filled && block[start + i] == ' ';
    if (!filled)
        block.find(severity::warning, start, "A text is not filled up with spaces after its line feed.", clause);
    if (bytes.empty() || bytes.find_first_not_of(' ') == std::string::npos)
        block.find(severity::warning, start, "A text is empty.", clause);
    const auto is_filler = [](char c) { return c == ' ' || c == '\0'; };
    if (end == longest && is_filler(bytes.back()))
        block.find(severity::warning, start, "A text has no line feed at its end.", clause);
    while (!bytes.empty() && is_filler(bytes.back()))
        bytes.pop_back();
    return text_from_bytes(bytes);
}

/// What follows the limits: the formula that the display uses for other timings.
void read_formula(const block_reader& block, std::size_t offset, range_limits& r) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.10.3.3";
    const unsigned kind = block[offset + 10];
    const bool secondary = kind == 2 || kind == 4;
    switch (kind) {
    case 0:
        r.formula = "default GTF";
        break;
    case 1:
        r.formula = "limits only";
        break;
    case 2:
        r.formula = "secondary GTF";
        break;
    case 4:
        r.formula = "CVT";
        // six bits, in 0.25 MHz below the clock of byte 9
        if (r.max_clock_mhz) r.exact_max_clock_mhz = *r.max_clock_mhz - (block[offset + 12] >> 2) * 0.25;
        break;
    default:
        block.find(severity::warning, offset + 10, "The range limits name an unknown formula.", clause);
        return;
    }
    if (kind == 0 && block.facts.revision >= 4 && !block.facts.continuous_frequency)
        block.find(severity::warning, offset + 10, "GTF needs the continuous frequency flag.", clause);
    bool filled = block[offset + 11] == '\n';
    for (std::size_t i = 12; i < descriptor_size; ++i)
        filled = filled && block[offset + i] == ' ';
    if (!secondary && !filled)
        block.find(severity::note, offset + 11, "The range limits do not end with a line feed and spaces.", clause);
    if (kind == 1 && block.facts.revision < 4)
        block.find(severity::warning, offset + 10, "\"Limits only\" needs EDID 1.4.", clause);
    if (kind == 4 && (block.facts.revision < 4 || !block.facts.continuous_frequency))
        block.find(severity::warning, offset + 10, "CVT needs EDID 1.4 and the continuous frequency flag.", clause);
}

void read_limits(const block_reader& block, std::size_t offset) {
    constexpr std::string_view clause = "VESA E-EDID 1.4, 3.10.3.3";
    // the byte of the offsets is new in EDID 1.4
    const unsigned flags = block.facts.revision >= 4 ? block[offset + 4] : 0;
    const auto value = [&](std::size_t i, bool offset_by_255) {
        return block[offset + i] + (offset_by_255 ? 255U : 0U);
    };
    range_limits r;
    r.where = block.at(offset, descriptor_size);
    // 2: the maximum is offset; 3: the minimum as well
    r.min_v_hz = value(5, (flags & 3) == 3);
    r.max_v_hz = value(6, (flags & 2) != 0);
    r.min_h_khz = value(7, (flags >> 2 & 3) == 3);
    r.max_h_khz = value(8, (flags >> 2 & 2) != 0);
    if (block[offset + 9] != 0) r.max_clock_mhz = block[offset + 9] * 10U;
    if ((flags & 0xF0) != 0 || (flags & 3) == 1 || (flags >> 2 & 3) == 1)
        block.find(severity::warning, offset + 4, "Reserved bits of the range limits are set.", clause);
    if (block[offset + 4] != 0 && block.facts.revision < 4)
        block.find(severity::warning, offset + 4, "Offsets of range limits need EDID 1.4.", clause);
    if (r.min_v_hz > r.max_v_hz || r.min_h_khz > r.max_h_khz)
        block.find(severity::error, offset + 5, "A minimum of the range limits is above its maximum.", clause);
    if (r.min_v_hz == 0 || r.min_h_khz == 0)
        block.find(severity::warning, offset + 5, "A minimum of the range limits is 0.", clause);
    read_formula(block, offset, r);
    if (block.facts.limits)
        block.find(severity::warning, offset, "There is a second descriptor of range limits.", clause);
    else
        block.facts.limits = r;
}

void take_text(const block_reader& block, std::size_t offset, std::string& text, const char* what) {
    std::string read = read_text(block, offset);
    if (text.empty())
        text = std::move(read);
    else
        block.find(severity::warning, offset, std::string("There is a second ") + what + ".", clause_of_descriptors);
}

void check_dummy(const block_reader& block, std::size_t offset) {
    for (std::size_t i = 5; i < descriptor_size; ++i)
        if (block[offset + i] != 0) {
            block.find(severity::warning, offset + i, "A dummy descriptor is not filled with 0.",
                       "VESA E-EDID 1.4, 3.10.3.11");
            return;
        }
}

void read_color_points(const block_reader& block, std::size_t offset) {
    for (const std::size_t at : {offset + 5, offset + 10})
        if (block[at] != 0 && block[at + 4] == 0)
            block.find(severity::note, at + 4, "An additional white point has a gamma of 1.00.",
                       "VESA E-EDID 1.4, 3.10.3.5");
}

void check_flags(const block_reader& block, std::size_t offset, std::uint8_t kind) {
    if (block[offset + 2] != 0 || (block[offset + 4] != 0 && kind != tag_limits))
        block.find(severity::warning, offset, "A reserved byte of a display descriptor is not 0.",
                   clause_of_descriptors);
}

/// Checks that concern all descriptors together.
void check_all(const block_reader& block) {
    const display_facts& f = block.facts;
    const bool is_1_3_or_later = f.version == 1 && f.revision >= 3;
    if (is_1_3_or_later && !is_detailed_timing(block, places[0]))
        block.find(severity::error, places[0], "The first descriptor is not a detailed timing.",
                   "VESA E-EDID 1.4, 3.10.1");
    bool display_descriptor = false;
    for (const std::size_t offset : places) {
        if (!is_detailed_timing(block, offset)) {
            display_descriptor = true;
        } else if (display_descriptor && is_1_3_or_later) {
            block.find(severity::warning, offset, "A detailed timing follows a display descriptor.",
                       clause_of_descriptors);
            break;
        }
    }
    if (f.version != 1 || f.revision != 3) {
        if (is_1_3_or_later && f.continuous_frequency && !f.limits)
            block.find(severity::warning, 24, "A continuous frequency display has no range limits.",
                       "VESA E-EDID 1.4, 3.10.3.3");
        return;
    }
    if (f.name.empty()) block.find(severity::warning, places[0], "The name is missing.", "VESA E-EDID 1.3, 3.10.3");
    if (!f.limits) block.find(severity::warning, places[0], "The range limits are missing.", "VESA E-EDID 1.3, 3.10.3");
}

} // namespace

bool is_display_descriptor(const block_reader& block, std::size_t offset) {
    return block.three_bytes(offset) == 0 &&
           (block[offset + 3] == tag_dummy || block[offset + 3] >= tag_established_iii);
}

void read_display_descriptor(const block_reader& block, std::size_t offset) {
    const std::uint8_t kind = block[offset + 3];
    check_flags(block, offset, kind);
    const auto label = [&](part what, std::string_view label_text) {
        block.name(offset, descriptor_size, what, label_text);
    };
    switch (kind) {
    case tag_serial_number:
        label(part::text, "Serial number text");
        return take_text(block, offset, block.facts.serial_text, "serial number text");
    case tag_string:
        label(part::text, "Text");
        block.facts.strings.push_back(read_text(block, offset));
        return;
    case tag_limits:
        label(part::range_limits, "Range limits");
        return read_limits(block, offset);
    case tag_name:
        label(part::text, "Name");
        return take_text(block, offset, block.facts.name, "name");
    case tag_color_points:
        label(part::color, "Additional white points");
        return read_color_points(block, offset);
    case tag_standard_timings:
        label(part::standard, "More standard timings");
        for (std::size_t i = 0; i < 6; ++i)
            read_standard_code(block, offset + 5 + 2 * i);
        return;
    case tag_color_management:
        return label(part::color, "Colour management data");
    case tag_cvt_codes:
        label(part::other_descriptor, "CVT codes");
        for (std::size_t i = 0; i < 4; ++i)
            read_cvt_code(block, offset + 6 + 3 * i);
        return;
    case tag_established_iii:
        label(part::established, "Established timings III");
        return read_established_iii(block, offset + 6);
    case tag_dummy:
        label(part::padding, "Dummy descriptor");
        return check_dummy(block, offset);
    default:
        label(part::unknown, kind < tag_dummy ? "Descriptor of the manufacturer" : "Unknown descriptor");
        block.keep_unknown(offset, descriptor_size,
                           kind < tag_dummy ? "descriptor of the manufacturer" : "unknown descriptor");
        if (kind > tag_dummy)
            block.find(severity::warning, offset + 3, "A display descriptor has a reserved tag.",
                       clause_of_descriptors);
    }
}

void read_descriptors(const block_reader& block) {
    const display_facts& f = block.facts;
    const bool first_is_preferred = (f.version == 1 && f.revision >= 3) || f.preferred_is_native;
    for (const std::size_t offset : places) {
        if (is_detailed_timing(block, offset))
            read_detailed_timing(block, offset, offset == places[0] && first_is_preferred);
        else
            read_display_descriptor(block, offset);
    }
    check_all(block);
}

} // namespace desk::facts
