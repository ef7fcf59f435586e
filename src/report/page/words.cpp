#include "report/page/words.h"

#include "drawing/markup_writer.h"
#include "runtime/text.h"

#include <algorithm>
#include <cmath>

namespace desk::page {

using drawing::append_number;

std::string rate_words(double hz) {
    std::string words;
    append_number(words, hz, 2);
    return words + " Hz";
}

std::string resolution_words(std::uint32_t width, std::uint32_t height, bool interlaced) {
    return std::to_string(width) + "\xC2\xA0\xC3\x97\xC2\xA0" + std::to_string(height) + (interlaced ? "i" : "");
}

std::string mode_words(const facts::video_mode& mode) {
    return resolution_words(mode.width, mode.height, mode.interlaced) + ", " + rate_words(mode.refresh_hz);
}

std::string hex_words(std::uint32_t value, int digits) {
    std::string text = hex(value);
    const auto wanted = static_cast<std::size_t>(digits);
    if (text.size() < wanted) text.insert(0, wanted - text.size(), '0');
    return "0x" + text;
}

std::string count_words(std::size_t count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

void append_listed(std::string& list, std::string_view word) {
    if (word.empty()) return;
    if (!list.empty()) list += ", ";
    list += word;
}

std::optional<image_size> size_of_image(const facts::display_facts& facts) {
    std::optional<image_size> size;
    if (facts.width_cm && facts.height_cm) size = image_size{*facts.width_cm * 10.0, *facts.height_cm * 10.0, false};
    for (const facts::display_id_section& section : facts.display_id)
        if (section.width_mm > 0 && section.height_mm > 0) return image_size{section.width_mm, section.height_mm, true};
    for (const facts::detailed_timing& timing : facts.detailed_timings) {
        if (timing.width_mm == 0 || timing.height_mm == 0) continue;
        const image_size stated{static_cast<double>(timing.width_mm), static_cast<double>(timing.height_mm), true};
        constexpr double rounding_mm = 10;
        if (!size) return std::nullopt;
        if (std::abs(stated.width_mm - size->width_mm) <= rounding_mm &&
            std::abs(stated.height_mm - size->height_mm) <= rounding_mm)
            return stated;
    }
    return size;
}

double diagonal_inches(const image_size& size) {
    constexpr double mm_of_inch = 25.4;
    return std::hypot(size.width_mm, size.height_mm) / mm_of_inch;
}

std::string size_words(const image_size& size) {
    std::string words;
    append_number(words, size.width_mm, 0);
    words += " \xC3\x97 ";
    append_number(words, size.height_mm, 0);
    words += " mm, ";
    append_number(words, diagonal_inches(size), 1);
    return words + "\xE2\x80\xB3";
}

std::string maker_words(const facts::display_facts& facts) {
    if (facts.maker.empty()) return "not stated";
    if (facts.maker_name.empty()) return facts.maker + " (not in the list of manufacturers)";
    return std::string(facts.maker_name) + " (" + facts.maker + ")";
}

std::string model_words(const facts::display_facts& facts) {
    if (!facts.name.empty()) return facts.name;
    for (const facts::display_id_section& section : facts.display_id)
        if (!section.product_name.empty()) return section.product_name;
    if (!facts.has_base_block) return "Incomplete EDID";
    return facts.maker + " " + hex_words(facts.product_code, 4);
}

std::string date_words(const facts::display_facts& facts) {
    if (!facts.year) return "";
    const std::string year = std::to_string(*facts.year);
    if (facts.is_model_year) return year + " (model year)";
    return facts.week ? "Week " + std::to_string(*facts.week) + " of " + year : year;
}

std::string input_words(const facts::display_facts& facts) {
    if (!facts.has_base_block) return "not stated";
    std::string words = facts.digital ? "Digital" : "Analog";
    if (!facts.digital) {
        append_listed(words, facts.analog.levels);
        return words;
    }
    append_listed(words, facts.digital_interface.interface);
    if (facts.digital_interface.bits_per_color != 0)
        append_listed(words, std::to_string(facts.digital_interface.bits_per_color) + " bits per colour");
    return words;
}

bool has_hdr(const facts::display_facts& facts) {
    if (facts.cta.hdr10_plus || facts.cta.dolby_vision != 0) return true;
    if (!facts.cta.hdr) return false;
    const auto& eotfs = facts.cta.hdr->eotfs;
    return std::any_of(eotfs.begin(), eotfs.end(), [](std::string_view name) { return name != "SDR"; });
}

std::string hdr_words(const facts::display_facts& facts) {
    if (!has_hdr(facts)) return "no";
    std::string words;
    if (facts.cta.hdr)
        for (const std::string_view name : facts.cta.hdr->eotfs)
            if (name != "SDR") append_listed(words, name);
    if (facts.cta.hdr10_plus) append_listed(words, "HDR10+");
    if (facts.cta.dolby_vision != 0) append_listed(words, "Dolby Vision");
    if (facts.cta.hdr && facts.cta.hdr->max_nits)
        append_listed(words, "up to " + drawing::number_text(*facts.cta.hdr->max_nits, 0) + " cd/m\xC2\xB2");
    return words;
}

std::string address_words(const facts::hdmi_block& hdmi) {
    return hdmi.address ? "physical address " + hdmi.address_text() : "no physical address";
}

std::string range_words(const facts::range_limits& limits) {
    std::string words = std::to_string(limits.min_v_hz) + " to " + std::to_string(limits.max_v_hz) + " Hz, " +
                        std::to_string(limits.min_h_khz) + " to " + std::to_string(limits.max_h_khz) + " kHz";
    if (limits.max_clock_mhz) words += ", up to " + drawing::number_text(*limits.max_clock_mhz, 2) + " MHz";
    return words;
}

finding_counts count_findings(const facts::display_facts& facts) {
    finding_counts counts;
    for (const facts::finding& f : facts.findings)
        ++(f.level == facts::severity::error     ? counts.errors
           : f.level == facts::severity::warning ? counts.warnings
                                                 : counts.notes);
    return counts;
}

} // namespace desk::page
