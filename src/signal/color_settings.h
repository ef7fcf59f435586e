#pragma once

#include "link/exchange.h"
#include "signal/desk_frame.h"

#include <array>
#include <cstdint>
#include <string>

namespace desk {

/// The controls of the colour setting pattern: they send values during a drag, without waiting for answers. Index 0
/// is red or Cr, 1 green or Y, 2 blue or Cb, 3 grey.
class color_settings {
public:
    color_settings(exchange& link, desk_frame& desk);

    std::uint8_t color_mode = 0; ///< 1: RGB; 2: luminance and colour differences; 0: no download yet
    /// Last values of the three channels, sent or read: the grey control moves no slider.
    std::array<std::uint8_t, 3> channels{};

    void hsr_color_setting_change(int index); ///< also Scroll
    void txt_color_setting_got_focus(int index);
    void txt_color_setting_key_press(int index, int key);

private:
    void wire_events();
    /// Stores the value of a control.
    void choose(int index, int value);
    /// Shows in the three channel boxes what a grey value means.
    void show_grey(const std::string& value);

    exchange& exchange_;
    desk_frame& desk_frame_;
};

} // namespace desk
