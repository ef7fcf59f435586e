#include "drawing/display_outline.h"

#include "drawing/svg_drawing.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace desk::drawing {

void draw_display_outline(markup_writer& out, double width_mm, double height_mm) {
    constexpr double a4_width_mm = 210;
    constexpr double a4_height_mm = 297;
    constexpr double room_width = 300;
    constexpr double room_height = 180;
    constexpr double gap = 18;
    constexpr double margin_left = 6;
    constexpr double margin_top = 6;
    constexpr double margin_right = 14;
    constexpr double margin_bottom = 24;
    const double scale =
        std::min((room_width - gap) / (width_mm + a4_width_mm), room_height / std::max(height_mm, a4_height_mm));
    const double width = width_mm * scale;
    const double height = height_mm * scale;
    const double floor = margin_top + room_height;
    const std::string width_text = number_text(width_mm, 0) + " mm";
    const std::string height_text = number_text(height_mm, 0) + " mm";
    const std::string diagonal_text = number_text(std::hypot(width_mm, height_mm) / 25.4, 1) + "\xE2\x80\xB3";
    svg_drawing drawing(out, "outline", margin_left + room_width + margin_right, floor + margin_bottom,
                        "The display, " + width_text + " wide and " + height_text +
                            " high, drawn to scale beside a sheet of A4 paper.");
    const double x = margin_left + std::max(0.0, (room_width - gap - width - a4_width_mm * scale) / 2);
    const double y = floor - height;
    drawing.rectangle("screen", x, y, width, height, 2);
    drawing.line("diagonal", {x, floor}, {x + width, y});
    drawing.text("size", {x + width / 2, y + height / 2 + 5}, anchor::middle, diagonal_text);
    drawing.text("axis", {x + width / 2, floor + 17}, anchor::middle, width_text + " \xC3\x97 " + height_text);
    const double a4_width = a4_width_mm * scale;
    const double a4_height = a4_height_mm * scale;
    drawing.rectangle("paper", x + width + gap, floor - a4_height, a4_width, a4_height);
    drawing.text("axis", {x + width + gap + a4_width / 2, floor + 17}, anchor::middle, "A4");
}

} // namespace desk::drawing
