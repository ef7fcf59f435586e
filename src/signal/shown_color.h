#pragma once

#include <array>
#include <cstdint>

namespace desk {

using rgb_color = std::array<std::uint8_t, 3>;

/// Converts the three channels of the color settings: red, green and blue stay as they are; Cr, Y and Cb
/// (`color_mode` 2) go through the full-range matrix of ITU-T T.871, which is that of ITU-R BT.601. Values are full
/// range, 0 to 255, with the zero of the color differences at 128.
rgb_color shown_color(std::uint8_t color_mode, const std::array<std::uint8_t, 3>& channels);

} // namespace desk
