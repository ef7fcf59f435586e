#include "drawing/color_space.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace desk::drawing {
namespace {

const color_triangle srgb = {{{0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}}};
const color_triangle bt2020 = {{{0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}}};

TEST(standard_gamuts, have_the_primaries_of_their_standards) {
    ASSERT_EQ(standard_gamuts().size(), 3U);
    EXPECT_EQ(standard_gamuts()[0].name, "sRGB");
    // half the determinant of the corners
    EXPECT_NEAR(area_of(standard_gamuts()[0].primaries), 0.11205, 1e-9);
    EXPECT_NEAR(area_of(standard_gamuts()[1].primaries), 0.1520, 1e-9);
    EXPECT_NEAR(area_of(standard_gamuts()[2].primaries), 0.2118665, 1e-9);
}

TEST(coverage, of_a_gamut_by_itself_is_complete) {
    for (const standard_gamut& gamut : standard_gamuts())
        EXPECT_NEAR(coverage(gamut.primaries, gamut.primaries), 1, 1e-12) << gamut.name;
}

TEST(coverage, by_a_larger_gamut_is_complete_and_never_more) {
    EXPECT_NEAR(coverage(bt2020, srgb), 1, 1e-12);
    EXPECT_LE(coverage({{{1, 0}, {0, 1}, {0, 0}}}, srgb), 1);
}

TEST(coverage, by_a_gamut_inside_is_the_ratio_of_the_areas) {
    EXPECT_NEAR(coverage(srgb, bt2020), 0.11205 / 0.2118665, 1e-9);
}

TEST(coverage, of_a_gamut_by_its_half_is_a_half) {
    // the third corner is in the middle of the opposite side
    const color_triangle half = {{{0.64, 0.33}, {0.30, 0.60}, {(0.64 + 0.15) / 2, (0.33 + 0.06) / 2}}};
    EXPECT_NEAR(coverage(half, srgb), 0.5, 1e-9);
}

TEST(coverage, does_not_depend_on_the_order_of_the_primaries) {
    const color_triangle turned = {{{0.15, 0.06}, {0.30, 0.60}, {0.64, 0.33}}};
    EXPECT_NEAR(coverage(turned, bt2020), coverage(srgb, bt2020), 1e-12);
    EXPECT_NEAR(coverage(turned, srgb), 1, 1e-12);
}

TEST(coverage, by_a_gamut_elsewhere_or_without_an_area_is_0) {
    EXPECT_EQ(coverage({{{0.8, 0.8}, {0.9, 0.8}, {0.8, 0.9}}}, srgb), 0);
    EXPECT_EQ(coverage({}, srgb), 0);
    EXPECT_EQ(coverage({{{0.1, 0.1}, {0.2, 0.2}, {0.3, 0.3}}}, srgb), 0);
}

TEST(color_temperature, of_d65_is_6504_kelvin) {
    ASSERT_TRUE(color_temperature(white_d65).has_value());
    EXPECT_NEAR(*color_temperature(white_d65), 6504, 10);
}

TEST(color_temperature, of_illuminant_a_is_2856_kelvin) {
    EXPECT_NEAR(color_temperature({0.44757, 0.40745}).value_or(0), 2856, 10);
}

TEST(color_temperature, is_missing_where_it_means_nothing) {
    EXPECT_FALSE(color_temperature({0, 0}).has_value());
    EXPECT_FALSE(color_temperature({0.1, 0.1858}).has_value());
    EXPECT_FALSE(color_temperature({0.7, 0.3}).has_value());
}

TEST(shown_color, of_d65_is_white) {
    for (const std::uint8_t part : shown_color(white_d65))
        EXPECT_GE(part, 254);
}

TEST(shown_color, of_a_primary_is_that_primary) {
    EXPECT_EQ(shown_color(srgb[0])[0], 255);
    EXPECT_LE(shown_color(srgb[0])[1], 8);
    EXPECT_LE(shown_color(srgb[0])[2], 8);
    EXPECT_EQ(shown_color(srgb[2])[2], 255);
    EXPECT_LE(shown_color(srgb[2])[0], 8);
}

TEST(spectral_locus, has_the_points_of_the_observer) {
    const auto at = [](int wavelength) {
        return std::find_if(spectral_locus().begin(), spectral_locus().end(),
                            [&](const spectral_point& p) { return p.wavelength_nm == wavelength; })
            ->at;
    };
    EXPECT_EQ(at(520).x, 0.0743);
    EXPECT_EQ(at(520).y, 0.8338);
    EXPECT_EQ(at(700).x, 0.7347);
    EXPECT_EQ(at(380).y, 0.0050);
}

TEST(spectral_locus, has_rising_wavelengths_and_lies_around_every_gamut) {
    int last = 0;
    for (const spectral_point& p : spectral_locus()) {
        EXPECT_GT(p.wavelength_nm, last);
        last = p.wavelength_nm;
        EXPECT_LE(p.at.x + p.at.y, 1.0001) << p.wavelength_nm;
    }
    // the corner of BT.2020 that is nearest to the locus is its green, at 532 nm
    for (const standard_gamut& gamut : standard_gamuts())
        EXPECT_LT(gamut.primaries[1].x + gamut.primaries[1].y, 1);
}

} // namespace
} // namespace desk::drawing
