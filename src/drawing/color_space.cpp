#include "drawing/color_space.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace desk::drawing {

namespace {

constexpr std::array<standard_gamut, 3> gamuts = {{
    {"sRGB", "srgb", {{{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}}}},
    {"DCI-P3", "p3", {{{0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}}}},
    {"BT.2020", "bt2020", {{{0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}}}},
}};

/// Twice the area of the triangle a, b, c; positive if c is to the left of a to b.
double side(chromaticity_point a, chromaticity_point b, chromaticity_point c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

using polygon_corners = std::vector<chromaticity_point>;

/// The part of a convex polygon to the left of the line from a to b.
polygon_corners left_part(const polygon_corners& corners, chromaticity_point a, chromaticity_point b) {
    polygon_corners result;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const chromaticity_point from = corners[i];
        const chromaticity_point to = corners[(i + 1) % corners.size()];
        const double from_side = side(a, b, from);
        const double to_side = side(a, b, to);
        if (from_side >= 0) result.push_back(from);
        if ((from_side > 0 && to_side < 0) || (from_side < 0 && to_side > 0)) {
            const double t = from_side / (from_side - to_side);
            result.push_back({from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)});
        }
    }
    return result;
}

double area_of_polygon(const polygon_corners& corners) {
    double doubled = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const chromaticity_point a = corners[i];
        const chromaticity_point b = corners[(i + 1) % corners.size()];
        doubled += a.x * b.y - b.x * a.y;
    }
    return std::abs(doubled) / 2;
}

color_triangle counterclockwise(color_triangle t) {
    if (side(t[0], t[1], t[2]) < 0) std::swap(t[1], t[2]);
    return t;
}

double companded(double linear) {
    return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

} // namespace

std::span<const standard_gamut> standard_gamuts() { return gamuts; }

double area_of(const color_triangle& triangle) { return std::abs(side(triangle[0], triangle[1], triangle[2])) / 2; }

double coverage(const color_triangle& display, const color_triangle& gamut) {
    constexpr double no_area = 1e-9;
    if (area_of(display) < no_area) return 0;
    const color_triangle clip = counterclockwise(display);
    polygon_corners common(gamut.begin(), gamut.end());
    for (std::size_t i = 0; i < clip.size(); ++i)
        common = left_part(common, clip[i], clip[(i + 1) % clip.size()]);
    return std::min(area_of_polygon(common) / area_of(gamut), 1.0);
}

std::optional<double> color_temperature(chromaticity_point white) {
    constexpr double lowest = 2000;
    constexpr double highest = 25000;
    // the daylight locus of CIE 015, which goes on along the black bodies below 4000 K
    const double daylight_y = (-3 * white.x + 2.87) * white.x - 0.275;
    constexpr double farthest = 0.05;
    if (!(white.x > 0.23 && white.x < 0.53 && std::abs(white.y - daylight_y) < farthest)) return std::nullopt;
    const double n = (white.x - 0.3320) / (0.1858 - white.y);
    const double kelvin = ((449 * n + 3525) * n + 6823.3) * n + 5520.33;
    if (!(kelvin >= lowest && kelvin <= highest)) return std::nullopt;
    return kelvin;
}

std::array<std::uint8_t, 3> shown_color(chromaticity_point point) {
    const double y = std::max(point.y, 1e-6);
    const double big_x = point.x / y;
    const double big_z = (1 - point.x - y) / y;
    // IEC 61966-2-1
    std::array<double, 3> rgb = {3.2406 * big_x - 1.5372 - 0.4986 * big_z, -0.9689 * big_x + 1.8758 + 0.0415 * big_z,
                                 0.0557 * big_x - 0.2040 + 1.0570 * big_z};
    const double lowest = std::min(*std::min_element(rgb.begin(), rgb.end()), 0.0);
    for (double& part : rgb)
        part -= lowest;
    const double largest = std::max(*std::max_element(rgb.begin(), rgb.end()), 1e-9);
    std::array<std::uint8_t, 3> bytes{};
    std::transform(rgb.begin(), rgb.end(), bytes.begin(), [&](double part) {
        return static_cast<std::uint8_t>(std::lround(255 * companded(part / largest)));
    });
    return bytes;
}

} // namespace desk::drawing
