#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace desk::drawing {

/// CIE 1931 coordinates.
struct chromaticity_point {
    double x = 0;
    double y = 0;
};

using color_triangle = std::array<chromaticity_point, 3>; ///< red, green, blue

/// A colour space with published primaries.
struct standard_gamut {
    std::string_view name;
    std::string_view class_name; ///< in the page's style
    color_triangle primaries;
};

/// sRGB (IEC 61966-2-1), DCI-P3 (SMPTE RP 431-2) and BT.2020 (ITU-R BT.2020-2).
std::span<const standard_gamut> standard_gamuts();

/// The standard illuminant D65.
inline constexpr chromaticity_point white_d65 = {0.3127, 0.3290};

double area_of(const color_triangle& triangle);

/// How much of the area of `gamut` a display covers, 0 to 1; 0 for a display whose points form no triangle.
double coverage(const color_triangle& display, const color_triangle& gamut);

/// The correlated colour temperature in kelvin by McCamy's formula; empty far from white, where it means nothing.
std::optional<double> color_temperature(chromaticity_point white);

/// The sRGB colour of a chromaticity, as bright as it can be; what sRGB lacks is desaturated.
std::array<std::uint8_t, 3> shown_color(chromaticity_point point);

/// A point of the spectral locus.
struct spectral_point {
    int wavelength_nm;
    chromaticity_point at;
};

/// The spectral locus of the CIE 1931 2-degree observer (CIE 015:2018), 380 to 700 nm.
std::span<const spectral_point> spectral_locus();

} // namespace desk::drawing
