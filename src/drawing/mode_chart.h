#pragma once

#include "drawing/markup_writer.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace desk::drawing {

/// A point of the chart.
struct charted_mode {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    double refresh_hz = 0;
    double pixel_clock_mhz = 0;
    bool interlaced = false;
    bool native = false;
    std::string tip;
};

/// The classes of pixel clocks, by what carries them: single-link DVI to 165 MHz, HDMI 1.4 to 340, HDMI 2.0 to 600.
struct clock_class {
    double up_to_mhz; ///< 0: no limit
    std::string_view class_name;
    std::string_view words;
};
std::span<const clock_class> clock_classes();

/// The class of a pixel clock.
const clock_class& clock_class_of(double pixel_clock_mhz);

/// Resolution against refresh rate, with the pixel clock as colour. Draws nothing if no mode has pixels and a rate.
void draw_mode_chart(markup_writer& out, std::span<const charted_mode> modes);

} // namespace desk::drawing
