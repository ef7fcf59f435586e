#pragma once

#include "edid/facts/timing_facts.h"

#include <cstdint>

namespace desk::facts {

/// A video format of CTA-861, at the higher of its two rates (60 Hz, not 59.94 Hz) but for the formats of 480 and 240
/// lines.
struct vic_timing {
    std::uint8_t vic;
    std::uint16_t h_active;
    std::uint16_t v_active; ///< of a frame
    bool interlaced;
    std::uint16_t h_total;
    std::uint16_t v_total; ///< of a frame
    std::uint32_t pixel_clock_khz;
    std::uint16_t aspect_width; ///< of the picture
    std::uint16_t aspect_height;
};

/// Null for a code that is not assigned.
const vic_timing* timing_of_vic(std::uint8_t vic);

/// A 4K format of HDMI 1.4.
struct hdmi_vic_timing {
    std::uint16_t h_active;
    std::uint16_t v_active;
    std::uint16_t h_total;
    std::uint16_t v_total;
    std::uint32_t pixel_clock_khz;
};

/// Null for a code other than 1 to 4.
const hdmi_vic_timing* timing_of_hdmi_vic(std::uint8_t vic);

/// The code whose figures a detailed timing has, at either rate; of several the one with the nearest aspect ratio. 0 if
/// there is none.
std::uint8_t vic_of(const detailed_timing& timing);

} // namespace desk::facts
