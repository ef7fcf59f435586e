#pragma once

#include "drawing/markup_writer.h"

#include <span>
#include <string_view>

namespace desk::drawing {

/// A place in a drawing, in its own units; y grows downwards.
struct point {
    double x = 0;
    double y = 0;
};

enum class anchor : std::uint8_t { start, middle, end };

/// One SVG picture. Colours and fonts belong to the classes of the page's style, so a drawing is light or dark with
/// its page. The destructor ends the picture.
class svg_drawing {
public:
    /// `description` is the alternative text for screen readers.
    svg_drawing(markup_writer& out, std::string_view class_name, double width, double height,
                std::string_view description);
    svg_drawing(const svg_drawing&) = delete;
    svg_drawing& operator=(const svg_drawing&) = delete;
    ~svg_drawing();

    void rectangle(std::string_view class_name, double x, double y, double width, double height, double radius = 0);
    void line(std::string_view class_name, point from, point to);
    void polygon(std::string_view class_name, std::span<const point> corners);
    void polyline(std::string_view class_name, std::span<const point> corners);
    /// `tip` is shown at the pointer; empty: none.
    void circle(std::string_view class_name, point center, double radius, std::string_view tip = {});
    void text(std::string_view class_name, point at, anchor where, std::string_view words);
    /// Appends markup that is static or comes from another writer.
    void markup(std::string_view trusted) { out_.markup(trusted); }

private:
    void corners(std::string_view element, std::string_view class_name, std::span<const point> all);

    markup_writer& out_;
};

/// Appends "x,y x,y ..." with one decimal.
void append_points(std::string& out, std::span<const point> all);

} // namespace desk::drawing
