#pragma once

#include <array>
#include <cstdint>

namespace desk {

/// Red, green and blue, 0 to 255.
using rgb_color = std::array<std::uint8_t, 3>;

/// The color that the three channels of the color settings make: red, green and blue as they are, and Cr, Y and Cb
/// (`color_mode` 2) by the full-range matrix of ITU-T T.871, which is that of ITU-R BT.601. Values of 0 to 255 with
/// 128 as the zero of the color differences are full range.
rgb_color shown_color(std::uint8_t color_mode, const std::array<std::uint8_t, 3>& channels);

} // namespace desk
