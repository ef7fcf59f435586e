#pragma once

#include "drawing/color_space.h"
#include "drawing/markup_writer.h"

#include <string_view>

namespace desk::drawing {

/// The CIE 1931 diagram with the spectral locus, the standard gamuts, and a display's triangle and white point.
void draw_color_diagram(markup_writer& out, const color_triangle& display, chromaticity_point white,
                        std::string_view description);

} // namespace desk::drawing
