#pragma once

#include "edid/facts/cta_facts.h"
#include "edid/facts/finding.h"
#include "edid/facts/place.h"
#include "edid/facts/timing_facts.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace desk::facts {

/// CIE 1931 coordinates.
struct color_point {
    double x = 0;
    double y = 0;
};

struct chromaticity {
    color_point red;
    color_point green;
    color_point blue;
    color_point white;
};

/// The video input of an analog display.
struct analog_input {
    std::string_view levels; ///< static: "0.700 V, 0.300 V, 1.000 V p-p" (video, sync, total)
    bool blank_to_black = false;
    bool separate_sync = false;
    bool composite_sync = false;
    bool sync_on_green = false;
    bool serrated_sync = false;
};

/// The video input of a digital display.
struct digital_input {
    std::uint8_t bits_per_color = 0; ///< 0: not stated
    std::string_view interface;      ///< static: "HDMI-a", "DisplayPort"; empty: not stated
};

struct range_limits {
    place where;
    std::uint32_t min_v_hz = 0;
    std::uint32_t max_v_hz = 0;
    std::uint32_t min_h_khz = 0;
    std::uint32_t max_h_khz = 0;
    std::optional<std::uint32_t> max_clock_mhz; ///< in steps of 10
    std::optional<double> exact_max_clock_mhz;  ///< if stated for CVT; below the other by less than 16
    std::string_view formula;                   ///< static: "default GTF", "limits only", "secondary GTF", "CVT"
};

struct power_management {
    bool standby = false;
    bool suspend = false;
    bool active_off = false;
};

/// A DisplayID section in an extension block.
struct display_id_section {
    std::uint16_t block = 0;
    std::uint8_t version = 0; ///< major and minor in its halves: 0x12, 0x20
    std::uint8_t product_type = 0;
    std::string vendor; ///< three letters in 1.x, the IEEE OUI as "00-10-FA" in 2.x; empty: not stated
    std::optional<std::uint16_t> product_code;
    std::optional<std::uint32_t> serial_number;
    std::optional<int> year;
    std::optional<int> week;
    std::string product_name;
    std::uint32_t native_width = 0; ///< pixels; 0: not stated
    std::uint32_t native_height = 0;
    double width_mm = 0; ///< 0: not stated
    double height_mm = 0;
};

/// Bytes of unknown meaning.
struct unknown_bytes {
    place where;
    std::string_view what; ///< static
    std::vector<std::uint8_t> bytes;
};

/// What an EDID says about its display. A field without a value is not stated in the EDID.
struct display_facts {
    std::size_t size = 0;        ///< of the EDID in bytes
    std::vector<bool> checksums; ///< whether each whole block's checksum is right
    bool has_base_block = false; ///< there are 128 bytes at least
    bool has_header = false;

    std::string maker;           ///< PNP id of three letters; other characters of an invalid one too
    std::string_view maker_name; ///< static; empty: not in the list
    std::uint16_t product_code = 0;
    std::optional<std::uint32_t> serial_number;
    std::optional<int> week;
    std::optional<int> year; ///< of manufacture, or the model's
    bool is_model_year = false;
    std::uint8_t version = 0;
    std::uint8_t revision = 0;

    bool digital = false;
    analog_input analog;
    digital_input digital_interface;
    std::optional<int> width_cm;
    std::optional<int> height_cm;
    std::optional<double> aspect; ///< width by height, if stated instead of the size
    std::optional<double> gamma;
    power_management power;
    std::string_view color_type; ///< static, of analog displays: "RGB" and the like
    bool ycbcr444 = false;       ///< of digital displays
    bool ycbcr422 = false;
    bool srgb_default = false;
    bool preferred_is_native = false; ///< the first detailed timing has the native format and rate
    bool continuous_frequency = false;
    std::optional<facts::chromaticity> colors;

    std::string name; ///< in UTF-8, as are the other texts
    std::string serial_text;
    std::vector<std::string> strings;
    std::optional<range_limits> limits;

    std::vector<detailed_timing> detailed_timings;
    std::vector<video_mode> modes; ///< of all sources, in the order of their bytes
    cta_facts cta;
    std::vector<display_id_section> display_id;

    std::vector<unknown_bytes> unknown;
    std::vector<named_bytes> bytes; ///< what each byte belongs to, in order
    std::vector<finding> findings;  ///< in the order of the blocks
};

/// Reads an EDID of 1 to 256 blocks (E-EDID 1.0 to 1.4, CTA-861, DisplayID 1.x and 2.x). Takes any bytes, reports
/// oddities as findings and throws nothing but std::bad_alloc.
display_facts read_display_facts(std::span<const std::uint8_t> edid);

/// The native or preferred mode with the most pixels; if there is none, any with the most. Null without modes.
const video_mode* best_mode(const display_facts& facts);

} // namespace desk::facts
