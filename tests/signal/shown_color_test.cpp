#include "signal/shown_color.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace desk {
namespace {

constexpr std::uint8_t rgb = 1;
constexpr std::uint8_t differences = 2;

using channels = std::array<std::uint8_t, 3>;

/// Cr, Y and Cb of a color, by the equations that ITU-T T.871 gives for this way.
channels by_the_standard(int red, int green, int blue) {
    const double y = 0.299 * red + 0.587 * green + 0.114 * blue;
    const double cb = -0.1687 * red - 0.3313 * green + 0.5 * blue + 128;
    const double cr = 0.5 * red - 0.4187 * green - 0.0813 * blue + 128;
    const auto whole = [](double value) {
        return static_cast<std::uint8_t>(std::min(255L, std::max(0L, std::lround(value))));
    };
    return {whole(cr), whole(y), whole(cb)};
}

TEST(shown_color, is_the_three_channels_themselves_for_rgb) {
    EXPECT_EQ(shown_color(rgb, {10, 200, 255}), (rgb_color{10, 200, 255}));
}

TEST(shown_color, is_grey_if_both_differences_are_zero) {
    for (const std::uint8_t y : channels{0, 128, 255})
        EXPECT_EQ(shown_color(differences, {128, y, 128}), (rgb_color{y, y, y}));
}

TEST(shown_color, follows_the_factors_of_the_standard) {
    // R = Y + 1.402 (Cr - 128); G = Y - 0.3441 (Cb - 128) - 0.7141 (Cr - 128); B = Y + 1.772 (Cb - 128)
    EXPECT_EQ(shown_color(differences, {178, 100, 128}), (rgb_color{170, 64, 100}));
    EXPECT_EQ(shown_color(differences, {128, 100, 178}), (rgb_color{100, 83, 189}));
    EXPECT_EQ(shown_color(differences, {78, 100, 78}), (rgb_color{30, 153, 11}));
}

TEST(shown_color, converts_the_color_bars_back_within_rounding) {
    for (const int full : {255, 191}) {
        for (int bar = 0; bar < 8; ++bar) {
            const std::array<int, 3> bars = {(bar & 2) != 0 ? full : 0, (bar & 4) != 0 ? full : 0,
                                             (bar & 1) != 0 ? full : 0};
            const rgb_color shown = shown_color(differences, by_the_standard(bars[0], bars[1], bars[2]));
            for (std::size_t i = 0; i < 3; ++i)
                EXPECT_LE(std::abs(shown.at(i) - bars.at(i)), 1) << bar << " at " << i;
        }
    }
}

TEST(shown_color, stays_within_what_a_screen_can_show) {
    EXPECT_EQ(shown_color(differences, {255, 255, 255}), (rgb_color{255, 121, 255}));
    EXPECT_EQ(shown_color(differences, {0, 0, 0}), (rgb_color{0, 135, 0}));
}

} // namespace
} // namespace desk
