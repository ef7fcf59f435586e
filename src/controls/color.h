#pragma once

#include <cstdint>

namespace desk {

/// A colour as 0x00BBGGRR; `color_button_face` is the button colour of the adapter.
using color = std::uint32_t;

inline constexpr color color_button_face = 0x8000000F;
inline constexpr color color_red = 0x0000FF;
inline constexpr color color_dark_red = 0x0000C0;
inline constexpr color color_green = 0x00FF00;
inline constexpr color color_dark_green = 0x00A000;
inline constexpr color color_blue = 0xFF0000;
inline constexpr color color_current_view = 0xFFFF80;
inline constexpr color color_window = 0xC0C0C0;
inline constexpr color color_readout = 0xE8E8E8;
inline constexpr color color_black = 0x000000;
inline constexpr color color_white = 0xFFFFFF;

} // namespace desk
