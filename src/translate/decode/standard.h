#pragma once

#include "edid/format/buffer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// Appends the lines of the two-byte standard timing at an address (VESA E-EDID, section 3.9), the last one without its
/// line end. The code 0x01 0x01 of an unused timing is decoded like any other. Throws failure::subscript_out_of_range.
void decode_standard(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

/// Appends "--- Standard Timing N ---" and a line end.
void print_standard_heading(std::string& text, int number);

/// Appends `count` consecutive standard timings from an address on, under headings that count from `first_number`.
void print_standard_timings(std::string& text, const edid_buffer& trans_buff, int first_number, int count,
                            std::uint8_t address);

} // namespace desk
