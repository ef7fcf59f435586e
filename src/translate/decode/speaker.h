#pragma once

#include "edid/format/buffer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// The positions for each bit of the speaker allocation byte, from bit 0 (CEA-861-D, section 7.5.3).
inline constexpr std::array<std::string_view, 7> speaker_positions = {
    "FL/FR  ", "LFE  ", "FC  ", "RL/RR  ", "RC  ", "FLC/FRC  ", "RLC/RRC  ",
};

/// Appends a floor plan with the names of the eleven positions, with space for a picture below or above each.
void print_floor_plan(std::string& text);

/// The speaker allocation byte of the data block at an address, without its highest bit; 0 for address 0: there is no
/// such block. Throws failure::subscript_out_of_range.
std::uint8_t speaker_allocation(const edid_buffer& trans_buff, std::uint8_t address);

/// Appends the positions of the speaker allocation data block at an address, without a final line end. Throws
/// failure::subscript_out_of_range.
void print_speaker_allocation(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

/// Appends the floor plan and the positions; address 0: there is no such block.
void decode_speaker_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

/// Appends the positions and a line end: the report has no pictures, so it has no floor plan.
void report_speaker_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
