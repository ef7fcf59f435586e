#pragma once

#include "edid/buffer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// Appends the lines of the two-byte standard timing at an address (VESA E-EDID, section 3.9), the last one without its
/// line end. The code 0x01 0x01 of an unused place is decoded like any other. Throws failure::subscript_out_of_range.
void decode_standard(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

/// Appends "--- Standard Timing N ---" and a line end.
void print_standard_heading(std::string& text, int number);

/// Appends standard timings under their headings: `count` of them from number `first_number` on, which lie one behind
/// the other from an address on.
void print_standard_timings(std::string& text, const edid_buffer& trans_buff, int first_number, int count,
                            std::uint8_t address);

} // namespace desk
