#pragma once

#include "edid/facts/block_reader.h"

#include <cstdint>
#include <string_view>

namespace desk::facts {

/// Reads a DisplayID data block of timings. False: `tag` is not the tag of one.
bool read_display_id_timings(std::uint8_t tag, std::uint8_t revision, const payload& data);

/// Reads a detailed timing of 20 bytes: type I, whose clock is in 10 kHz, or VII, whose clock is in kHz.
void read_long_timing(const payload& data, std::uint32_t khz_of_clock_step);

} // namespace desk::facts
