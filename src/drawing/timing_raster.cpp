#include "drawing/timing_raster.h"

#include "drawing/svg_drawing.h"

#include <algorithm>
#include <string>

namespace desk::drawing {

namespace {

std::string words_of(const raster_line& line, std::string_view unit) {
    return std::to_string(line.active) + " active, " + std::to_string(line.front) + " front porch, " +
           std::to_string(line.sync) + " sync, " + std::to_string(line.back) + " back porch " + std::string(unit);
}

} // namespace

void draw_timing_raster(markup_writer& out, const raster_line& across, const raster_line& down) {
    constexpr double most_width = 340;
    constexpr double most_height = 240;
    constexpr double edge = 1;
    if (across.active == 0 || down.active == 0) return;
    const double scale = std::min(most_width / across.total(), most_height / down.total());
    const double width = across.total() * scale;
    const double height = down.total() * scale;
    svg_drawing drawing(out, "raster", width + 2 * edge, height + 2 * edge,
                        "Raster to scale. Horizontal: " + words_of(across, "pixels") +
                            ". Vertical: " + words_of(down, "lines") + ".");
    drawing.rectangle("total", edge, edge, width, height);
    const auto bands = [&](const raster_line& line, auto draw) {
        double at = edge + line.active * scale;
        for (const auto& [name, count] :
             {std::pair{"front", line.front}, std::pair{"sync", line.sync}, std::pair{"back", line.back}}) {
            if (count > 0) draw(name, at, count * scale);
            at += count * scale;
        }
    };
    bands(across,
          [&](std::string_view name, double at, double size) { drawing.rectangle(name, at, edge, size, height); });
    bands(down, [&](std::string_view name, double at, double size) { drawing.rectangle(name, edge, at, width, size); });
    drawing.rectangle("active", edge, edge, across.active * scale, down.active * scale);
    drawing.text("size", {edge + across.active * scale / 2, edge + down.active * scale / 2 + 5}, anchor::middle,
                 std::to_string(across.active) + " \xC3\x97 " + std::to_string(down.active));
}

} // namespace desk::drawing
