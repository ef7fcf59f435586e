#pragma once

#include "drawing/markup_writer.h"

namespace desk::drawing {

/// The front of a display drawn to scale beside a sheet of A4 paper. Sizes in millimetres, above 0.
void draw_display_outline(markup_writer& out, double width_mm, double height_mm);

} // namespace desk::drawing
