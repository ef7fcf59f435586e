#include "drawing/bar_chart.h"
#include "drawing/color_diagram.h"
#include "drawing/display_outline.h"
#include "drawing/mode_chart.h"
#include "drawing/speaker_plan.h"
#include "drawing/timing_raster.h"
#include "support/strict_xml.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <regex>

namespace desk::drawing {
namespace {

std::string drawn(const std::function<void(markup_writer&)>& draw) {
    std::string out;
    markup_writer writer(out);
    draw(writer);
    if (!out.empty()) {
        EXPECT_EQ(test::strict_xml(out).fault, "") << out;
        EXPECT_NE(out.find("role=\"img\" aria-label=\""), std::string::npos) << "it has an alternative text";
    }
    return out;
}

/// The value of an attribute of the first element of a class.
double attribute_of(const std::string& svg, const std::string& class_name, const std::string& attribute) {
    const std::regex element("<[a-z]+ class=\"" + class_name + "\"[^>]* " + attribute + "=\"([-0-9.]+)\"");
    std::smatch found;
    if (!std::regex_search(svg, found, element)) {
        ADD_FAILURE() << "no " << class_name << " with " << attribute;
        return std::nan("");
    }
    return std::stod(found[1]);
}

TEST(color_diagram, puts_the_white_point_where_its_coordinates_are) {
    const auto at = [](chromaticity_point white) {
        const std::string svg = drawn(
            [&](markup_writer& out) { draw_color_diagram(out, standard_gamuts()[0].primaries, white, "Colours"); });
        return std::pair(attribute_of(svg, "white-point", "cx"), attribute_of(svg, "white-point", "cy"));
    };
    const auto origin = at({0, 0});
    const auto d65 = at(white_d65);
    const auto corner = at({0.8, 0.8});
    const double unit = (corner.first - origin.first) / 0.8;
    EXPECT_NEAR(d65.first, origin.first + 0.3127 * unit, 0.2);
    EXPECT_NEAR(d65.second, origin.second - 0.3290 * unit, 0.2) << "y grows upwards, at the same scale";
}

TEST(color_diagram, takes_any_points) {
    const double infinity = std::numeric_limits<double>::infinity();
    drawn([&](markup_writer& out) {
        draw_color_diagram(out, {{{0, 0}, {0.999, 0.999}, {std::nan(""), infinity}}}, {1e30, -5}, "Colours");
    });
}

TEST(display_outline, has_the_proportions_of_the_display) {
    const std::string svg = drawn([](markup_writer& out) { draw_display_outline(out, 600, 340); });
    const double width = attribute_of(svg, "screen", "width");
    EXPECT_NEAR(attribute_of(svg, "screen", "height"), width * 340 / 600, 0.2);
    EXPECT_NEAR(attribute_of(svg, "paper", "width"), width * 210 / 600, 0.2) << "A4 has the same scale";
    EXPECT_NE(svg.find("27.2\xE2\x80\xB3"), std::string::npos) << "hypot(600, 340) / 25.4";
}

TEST(display_outline, fits_its_room_whatever_the_size) {
    for (const auto& [width, height] : {std::pair{1.0, 1.0}, {2550.0, 2550.0}, {2550.0, 1.0}, {1.0, 2550.0}}) {
        const std::string svg =
            drawn([&, w = width, h = height](markup_writer& out) { draw_display_outline(out, w, h); });
        EXPECT_GE(attribute_of(svg, "screen", "x"), 0);
        EXPECT_GE(attribute_of(svg, "screen", "y"), 0);
        EXPECT_LE(attribute_of(svg, "paper", "x") + attribute_of(svg, "paper", "width"), 321);
    }
}

TEST(timing_raster, is_to_scale) {
    const raster_line across = {1920, 88, 44, 148};
    const raster_line down = {1080, 4, 5, 36};
    const std::string svg = drawn([&](markup_writer& out) { draw_timing_raster(out, across, down); });
    const double unit = attribute_of(svg, "total", "width") / 2200;
    EXPECT_NEAR(attribute_of(svg, "total", "height"), 1125 * unit, 0.2);
    EXPECT_NEAR(attribute_of(svg, "active", "width"), 1920 * unit, 0.2);
    EXPECT_NEAR(attribute_of(svg, "active", "height"), 1080 * unit, 0.2);
    EXPECT_NEAR(attribute_of(svg, "front", "x"), 1 + 1920 * unit, 0.2);
    EXPECT_NEAR(attribute_of(svg, "sync", "x"), 1 + 2008 * unit, 0.2);
    EXPECT_NEAR(attribute_of(svg, "back", "x"), 1 + 2052 * unit, 0.2);
    EXPECT_NEAR(attribute_of(svg, "back", "width"), 148 * unit, 0.2);
}

TEST(timing_raster, draws_nothing_without_pixels) {
    EXPECT_EQ(drawn([](markup_writer& out) { draw_timing_raster(out, {0, 10, 10, 10}, {10, 1, 1, 1}); }), "");
    EXPECT_EQ(drawn([](markup_writer& out) { draw_timing_raster(out, {10, 1, 1, 1}, {0, 1, 1, 1}); }), "");
}

TEST(clock_class, is_the_lowest_that_carries_the_clock) {
    EXPECT_EQ(clock_class_of(25.175).class_name, "clock-1");
    EXPECT_EQ(clock_class_of(165).class_name, "clock-2");
    EXPECT_EQ(clock_class_of(165.01).class_name, "clock-3");
    EXPECT_EQ(clock_class_of(600).class_name, "clock-4");
    EXPECT_EQ(clock_class_of(1188).class_name, "clock-5");
}

TEST(mode_chart, puts_higher_rates_higher_and_larger_pictures_to_the_right) {
    const std::vector<charted_mode> modes = {{640, 480, 60, 25, false, false, "small"},
                                             {3840, 2160, 120, 1188, false, false, "large"}};
    const std::string svg = drawn([&](markup_writer& out) { draw_mode_chart(out, modes); });
    EXPECT_LT(attribute_of(svg, "clock-1", "cx"), attribute_of(svg, "clock-5", "cx"));
    EXPECT_GT(attribute_of(svg, "clock-1", "cy"), attribute_of(svg, "clock-5", "cy"));
    EXPECT_NE(svg.find("<title>large</title>"), std::string::npos);
}

TEST(mode_chart, takes_any_figures) {
    EXPECT_EQ(drawn([](markup_writer& out) { draw_mode_chart(out, {}); }), "");
    const charted_mode none = {0, 1080, 60, 10, false, false, ""};
    EXPECT_EQ(drawn([&](markup_writer& out) { draw_mode_chart(out, {&none, 1}); }), "");
    const std::vector<charted_mode> extremes = {{1, 1, 1e-6, 0, true, true, "<"},
                                                {4294967295U, 4294967295U, 4e6, 1e7, false, false, "\""}};
    const std::string svg = drawn([&](markup_writer& out) { draw_mode_chart(out, extremes); });
    EXPECT_LT(svg.size(), 20000U) << "the number of lines is limited";
}

TEST(speaker_plan, marks_what_is_present) {
    const std::vector<placed_speaker> speakers = {{"FL", -0.6, 0.8, speaker_height::ear, true},
                                                  {"TpC", 0, 0.3, speaker_height::top, false}};
    const std::string svg = drawn([&](markup_writer& out) { draw_speaker_plan(out, speakers, "Speakers"); });
    EXPECT_NE(svg.find("class=\"ear present\""), std::string::npos);
    EXPECT_NE(svg.find("class=\"top absent\""), std::string::npos);
    EXPECT_LT(attribute_of(svg, "ear present", "x"), attribute_of(svg, "listener", "cx"));
    EXPECT_LT(attribute_of(svg, "ear present", "y"), attribute_of(svg, "listener", "cy"));
}

TEST(bars, have_lengths_as_their_counts) {
    const std::vector<bar> bars = {{"a", 10, "first"}, {"b", 5, "second"}};
    const std::string svg = drawn([&](markup_writer& out) { draw_bars(out, bars, "What"); });
    EXPECT_NEAR(attribute_of(svg, "second", "width"), attribute_of(svg, "first", "width") / 2, 0.1);
    EXPECT_NE(svg.find("aria-label=\"What: a: 10, b: 5.\""), std::string::npos);
    EXPECT_EQ(drawn([](markup_writer& out) { draw_bars(out, {}, "What"); }), "");
}

TEST(columns, have_heights_as_their_counts) {
    const std::vector<bar> bars = {{"2019", 4, "first"}, {"2020", 0, "none"}, {"2021", 2, "second"}};
    const std::string svg = drawn([&](markup_writer& out) { draw_columns(out, bars, "What"); });
    EXPECT_NEAR(attribute_of(svg, "second", "height"), attribute_of(svg, "first", "height") / 2, 0.1);
    EXPECT_EQ(svg.find("class=\"none\""), std::string::npos);
}

} // namespace
} // namespace desk::drawing
