#pragma once

#include "edid/facts/place.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace desk::facts {

/// A detailed timing. Of an interlaced one the vertical figures are those of one field, in lines.
struct detailed_timing {
    place where;
    std::uint32_t pixel_clock_khz = 0;
    std::uint32_t h_active = 0; ///< horizontal figures in pixels
    std::uint32_t h_blank = 0;
    std::uint32_t h_front = 0;
    std::uint32_t h_sync = 0;
    std::uint32_t h_border = 0; ///< at each side
    std::uint32_t v_active = 0;
    std::uint32_t v_blank = 0;
    std::uint32_t v_front = 0;
    std::uint32_t v_sync = 0;
    std::uint32_t v_border = 0;
    bool interlaced = false;
    std::uint32_t width_mm = 0; ///< of the image; 0: not stated
    std::uint32_t height_mm = 0;
    std::string_view stereo; ///< static; empty: none
    std::string_view sync;   ///< static: "digital separate" and the like; empty in DisplayID
    std::optional<bool> h_sync_positive;
    std::optional<bool> v_sync_positive;
    bool preferred = false;
    bool display_id = false; ///< from a DisplayID block
    std::uint8_t vic = 0;    ///< the CTA-861 code whose figures these are; 0: none
    std::uint8_t dmt = 0;    ///< the VESA DMT id whose figures these are; 0: none

    double h_khz() const;
    /// Frames per second; fields for an interlaced timing. 0 if the timing has no pixels.
    double refresh_hz() const;
};

enum class mode_source : std::uint8_t {
    established,
    established_iii,
    standard,
    cvt_code,
    detailed,
    video_data_block,
    ycbcr420_data_block,
    hdmi_vic,
    display_id,
};

/// "established", "standard", "CVT code" and the like.
std::string_view name_of(mode_source source);

/// One mode that the display supports, from any source; detailed timings too.
struct video_mode {
    place where;
    mode_source source = mode_source::established;
    std::uint32_t width = 0;
    std::uint32_t height = 0; ///< of a frame
    bool interlaced = false;
    bool reduced_blanking = false;
    bool native = false;   ///< or preferred
    double refresh_hz = 0; ///< of fields for an interlaced mode
    double h_khz = 0;
    std::uint32_t pixel_clock_khz = 0;
    std::uint8_t vic = 0;     ///< 0: none
    std::uint8_t dmt = 0;     ///< 0: none
    std::string_view formula; ///< "GTF" or "CVT" if the clock and line rate come from that formula; static
};

} // namespace desk::facts
