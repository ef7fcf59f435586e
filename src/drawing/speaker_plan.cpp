#include "drawing/speaker_plan.h"

#include "drawing/svg_drawing.h"

#include <array>
#include <string>

namespace desk::drawing {

void draw_speaker_plan(markup_writer& out, std::span<const placed_speaker> speakers, std::string_view description) {
    constexpr double half = 130;
    constexpr double margin = 24;
    constexpr double middle = half + margin;
    constexpr double half_symbol = 15;
    constexpr std::array<std::string_view, 4> shapes = {"ear", "top", "bottom", "subwoofer"};
    svg_drawing drawing(out, "speakers", 2 * middle, 2 * middle, description);
    drawing.rectangle("room", 2, 2, 2 * middle - 4, 2 * middle - 4, 6);
    drawing.line("screen-line", {middle - 60, 8}, {middle + 60, 8});
    drawing.circle("listener", {middle, middle}, 11);
    drawing.polygon("listener", std::array<point, 3>{
                                    {{middle - 5, middle - 10}, {middle + 5, middle - 10}, {middle, middle - 18}}});
    for (const placed_speaker& s : speakers) {
        const point at = {middle + s.across * half, middle - s.ahead * half};
        std::string class_name(shapes.at(static_cast<std::size_t>(s.height)));
        class_name += s.present ? " present" : " absent";
        if (s.height == speaker_height::ear || s.height == speaker_height::subwoofer)
            drawing.rectangle(class_name, at.x - half_symbol, at.y - 10, 2 * half_symbol, 20,
                              s.height == speaker_height::ear ? 4 : 10);
        else
            drawing.polygon(class_name, std::array<point, 4>{{{at.x - half_symbol - 3, at.y},
                                                              {at.x, at.y - 12},
                                                              {at.x + half_symbol + 3, at.y},
                                                              {at.x, at.y + 12}}});
        drawing.text(s.present ? "label present" : "label absent", {at.x, at.y + 4}, anchor::middle, s.label);
    }
}

} // namespace desk::drawing
