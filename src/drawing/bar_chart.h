#pragma once

#include "drawing/markup_writer.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace desk::drawing {

/// A bar with its label.
struct bar {
    std::string label;
    std::size_t count = 0;
    std::string_view class_name = "bar"; ///< in the page's style
};

/// Horizontal bars below each other, with their counts. Draws nothing without bars.
void draw_bars(markup_writer& out, std::span<const bar> bars, std::string_view what);

/// Upright bars beside each other, for values in order; not every one has its label.
void draw_columns(markup_writer& out, std::span<const bar> bars, std::string_view what);

} // namespace desk::drawing
