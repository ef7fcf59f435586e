#pragma once

#include "edid/facts/display_facts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace desk::page {

/// The words and figures of the pages, in UTF-8.

/// "59.94 Hz".
std::string rate_words(double hz);
/// "1920 × 1080" with no-break spaces; an "i" follows if it is interlaced.
std::string resolution_words(std::uint32_t width, std::uint32_t height, bool interlaced);
/// "1920 × 1080, 60 Hz".
std::string mode_words(const facts::video_mode& mode);
/// "0x0A2F".
std::string hex_words(std::uint32_t value, int digits);
/// "1 error", "2 errors".
std::string count_words(std::size_t count, std::string_view noun);
/// The words of a list, separated by ", "; empty ones are left out.
void append_listed(std::string& list, std::string_view word);

/// The size of the image in millimetres.
struct image_size {
    double width_mm = 0;
    double height_mm = 0;
    bool is_exact = false; ///< from a timing or DisplayID, not in whole centimetres
};

/// The most exact size that the EDID states; a detailed timing counts only if it agrees with the base block.
std::optional<image_size> size_of_image(const facts::display_facts& facts);
/// The diagonal in inches.
double diagonal_inches(const image_size& size);
/// "597 × 336 mm, 27″".
std::string size_words(const image_size& size);

/// "Dell Inc. (DEL)".
std::string maker_words(const facts::display_facts& facts);
/// The name, or what comes nearest to one.
std::string model_words(const facts::display_facts& facts);
/// "Week 12 of 2020", "2020 (model year)"; empty if not stated.
std::string date_words(const facts::display_facts& facts);
/// "Digital, DisplayPort, 10 bits per colour".
std::string input_words(const facts::display_facts& facts);
/// "PQ, HLG, up to 603 cd/m²", or "no".
std::string hdr_words(const facts::display_facts& facts);
/// "physical address 1.0.0.0".
std::string address_words(const facts::hdmi_block& hdmi);
/// "48 to 75 Hz, 30 to 83 kHz, up to 170 MHz".
std::string range_words(const facts::range_limits& limits);

/// Whether the display takes a transfer function of high dynamic range.
bool has_hdr(const facts::display_facts& facts);

/// How many findings are of each severity.
struct finding_counts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
};
finding_counts count_findings(const facts::display_facts& facts);

} // namespace desk::page
