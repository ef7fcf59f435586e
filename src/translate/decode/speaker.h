#pragma once

#include "edid/buffer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// The positions that a bit of the speaker allocation byte stands for, from bit 0 on (CEA-861-D, section 7.5.3).
inline constexpr std::array<std::string_view, 7> speaker_positions = {
    "FL/FR  ", "LFE  ", "FC  ", "RL/RR  ", "RC  ", "FLC/FRC  ", "RLC/RRC  ",
};

/// Appends a floor plan with the names of the eleven positions, with room for a picture under or over each.
void print_floor_plan(std::string& text);

/// Appends the positions of the speaker allocation data block at an address, without a line end behind them. Gives the
/// allocation byte, without its highest bit. Throws failure::subscript_out_of_range.
std::uint8_t print_speaker_allocation(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

/// Appends the floor plan and the positions; address 0: there is no such block. Gives the allocation byte.
std::uint8_t decode_speaker_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

} // namespace desk
