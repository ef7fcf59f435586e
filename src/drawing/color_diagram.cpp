#include "drawing/color_diagram.h"

#include "drawing/svg_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace desk::drawing {

namespace {

constexpr double left = 34;
constexpr double top = 8;
constexpr double unit = 480; ///< of a coordinate of 1
constexpr double x_end = 0.8;
constexpr double y_end = 0.9;
constexpr double right = left + x_end * unit;
constexpr double bottom = top + y_end * unit;
constexpr double picture_width = right + 14;
constexpr double picture_height = bottom + 24;

point place_of(chromaticity_point p) { return {left + p.x * unit, bottom - p.y * unit}; }

std::string hex_color(std::array<std::uint8_t, 3> color) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const std::uint8_t byte : color) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

/// The border of the colours: the locus, and back along the line of purples.
std::vector<chromaticity_point> border_of_colors() {
    constexpr int purples = 8;
    std::vector<chromaticity_point> border;
    for (const spectral_point& s : spectral_locus())
        border.push_back(s.at);
    const chromaticity_point red = border.back();
    const chromaticity_point violet = border.front();
    for (int i = 1; i <= purples; ++i) {
        const double t = static_cast<double>(i) / purples;
        border.push_back({red.x + t * (violet.x - red.x), red.y + t * (violet.y - red.y)});
    }
    return border;
}

/// A fan of the border's colours, which a white glow fades in the middle.
void append_colors(markup_writer& out, const std::vector<chromaticity_point>& border) {
    const point white = place_of(white_d65);
    out.begin("radialGradient").attribute("id", "white-glow").attribute("gradientUnits", "userSpaceOnUse");
    out.attribute("cx", white.x).attribute("cy", white.y).attribute("r", 0.36 * unit);
    for (const auto& [offset, opacity] : {std::pair{"0", "1"}, std::pair{"0.35", "0.75"}, std::pair{"1", "0"}}) {
        out.begin("stop").attribute("offset", offset).attribute("stop-color", "#fff");
        out.attribute("stop-opacity", opacity);
        out.end_void();
    }
    out.end();
    out.begin("g", "spectrum");
    for (std::size_t i = 0; i + 1 < border.size(); ++i) {
        // a wedge reaches below the next one, so that no seam shows
        const std::array<point, 4> wedge = {white, place_of(border[i]), place_of(border[i + 1]),
                                            place_of(border[std::min(i + 2, border.size() - 1)])};
        std::string corners;
        append_points(corners, wedge);
        const chromaticity_point middle = {(border[i].x + border[i + 1].x) / 2, (border[i].y + border[i + 1].y) / 2};
        out.begin("polygon").attribute("points", corners).attribute("fill", hex_color(shown_color(middle)));
        out.end_void();
    }
    std::vector<point> corners(border.size());
    std::transform(border.begin(), border.end(), corners.begin(), place_of);
    std::string points;
    append_points(points, corners);
    out.begin("polygon").attribute("points", points).attribute("fill", "url(#white-glow)");
    out.end_void();
    out.end();
    out.begin("polygon", "locus").attribute("points", points);
    out.end_void();
}

void append_text(markup_writer& out, point at, std::string_view where, std::string_view words) {
    out.begin("text", "axis").attribute("x", at.x).attribute("y", at.y).attribute("text-anchor", where).text(words);
    out.end();
}

void append_grid(markup_writer& out) {
    std::string path;
    const auto add = [&](char command, double value) {
        path += command;
        append_number(path, value, 1);
    };
    for (int tenth = 0; tenth <= 8; ++tenth) {
        const double x = left + tenth * unit / 10;
        add('M', x);
        add(' ', top);
        add('V', bottom);
        if (tenth % 2 == 0) append_text(out, {x, bottom + 16}, "middle", number_text(tenth / 10.0, 1));
    }
    for (int tenth = 0; tenth <= 9; ++tenth) {
        const double y = bottom - tenth * unit / 10;
        add('M', left);
        add(' ', y);
        add('H', right);
        if (tenth % 2 == 0 && tenth > 0) append_text(out, {left - 6, y + 4}, "end", number_text(tenth / 10.0, 1));
    }
    append_text(out, {right - 2, bottom - 6}, "end", "x");
    append_text(out, {left + 6, top + 12}, "start", "y");
    out.begin("path", "grid").attribute("d", path);
    out.end_void();
}

void append_wavelengths(markup_writer& out) {
    constexpr std::array<int, 10> labelled = {460, 480, 500, 520, 540, 560, 580, 600, 620, 700};
    for (const spectral_point& s : spectral_locus()) {
        if (std::find(labelled.begin(), labelled.end(), s.wavelength_nm) == labelled.end()) continue;
        const bool is_left = s.at.x < 0.1 || s.wavelength_nm < 500;
        const point at = place_of(s.at);
        append_text(out, {at.x + (is_left ? -5 : 6), at.y + (s.wavelength_nm == 520 ? -4 : 3)},
                    is_left && s.wavelength_nm != 520 ? "end" : "start", std::to_string(s.wavelength_nm));
    }
}

void append_gamuts(markup_writer& out) {
    for (const standard_gamut& gamut : standard_gamuts()) {
        std::array<point, 3> corners;
        std::transform(gamut.primaries.begin(), gamut.primaries.end(), corners.begin(), place_of);
        std::string points;
        append_points(points, corners);
        out.begin("polygon", "gamut " + std::string(gamut.class_name)).attribute("points", points);
        out.end_void();
    }
}

/// What is the same in every diagram.
std::string background() {
    std::string markup;
    markup_writer out(markup);
    append_grid(out);
    append_colors(out, border_of_colors());
    append_wavelengths(out);
    append_gamuts(out);
    return markup;
}

} // namespace

void draw_color_diagram(markup_writer& out, const color_triangle& display, chromaticity_point white,
                        std::string_view description) {
    static const std::string same_for_all = background();
    svg_drawing drawing(out, "cie", picture_width, picture_height, description);
    drawing.markup(same_for_all);
    std::array<point, 3> corners;
    std::transform(display.begin(), display.end(), corners.begin(), place_of);
    drawing.polygon("gamut-halo", corners);
    drawing.polygon("gamut own", corners);
    for (const point& corner : corners)
        drawing.circle("primary", corner, 3.5);
    const point at = place_of(white);
    constexpr double arm = 6;
    drawing.circle("white-point", at, 3.5);
    drawing.line("white-cross", {at.x - arm, at.y}, {at.x + arm, at.y});
    drawing.line("white-cross", {at.x, at.y - arm}, {at.x, at.y + arm});
}

} // namespace desk::drawing
