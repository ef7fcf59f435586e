#pragma once

#include "edid/facts/timing_facts.h"

#include <cstdint>

namespace desk::facts {

/// A timing of VESA's list of display monitor timings.
struct dmt_timing {
    std::uint8_t id;
    std::uint16_t h_active;
    std::uint16_t v_active; ///< of a frame
    bool interlaced;
    std::uint16_t h_total; ///< borders included
    std::uint16_t v_total;
    std::uint32_t pixel_clock_khz;
    bool reduced_blanking;

    double refresh_hz() const; ///< of fields for an interlaced timing
};

/// Null for an id that is not in the list.
const dmt_timing* timing_of_dmt(std::uint8_t id);

/// The timing that a two-byte standard timing code names. Null if there is none.
const dmt_timing* standard_dmt(std::uint32_t width, std::uint32_t height, unsigned rate_hz);

/// The id whose figures a detailed timing has; 0 if there is none.
std::uint8_t dmt_of(const detailed_timing& timing);

} // namespace desk::facts
