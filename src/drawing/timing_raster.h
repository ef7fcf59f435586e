#pragma once

#include "drawing/markup_writer.h"

#include <cstdint>

namespace desk::drawing {

/// One direction of a raster, in pixels or lines, in the order of time.
struct raster_line {
    std::uint32_t active = 0;
    std::uint32_t front = 0;
    std::uint32_t sync = 0;
    std::uint32_t back = 0;

    std::uint32_t total() const { return active + front + sync + back; }
};

/// The raster of a video timing to scale: picture, porches and syncs. Draws nothing for a raster without pixels.
void draw_timing_raster(markup_writer& out, const raster_line& across, const raster_line& down);

} // namespace desk::drawing
