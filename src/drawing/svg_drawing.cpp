#include "drawing/svg_drawing.h"

#include <array>

namespace desk::drawing {

void append_points(std::string& out, std::span<const point> all) {
    for (const point& p : all) {
        if (&p != all.data()) out += ' ';
        append_number(out, p.x, 1);
        out += ',';
        append_number(out, p.y, 1);
    }
}

svg_drawing::svg_drawing(markup_writer& out, std::string_view class_name, double width, double height,
                         std::string_view description)
    : out_(out) {
    out_.begin("svg", class_name).attribute("xmlns", "http://www.w3.org/2000/svg");
    std::string box = "0 0 ";
    append_number(box, width, 1);
    box += ' ';
    append_number(box, height, 1);
    out_.attribute("viewBox", box).attribute("role", "img").attribute("aria-label", description);
}

svg_drawing::~svg_drawing() { out_.end(); }

void svg_drawing::rectangle(std::string_view class_name, double x, double y, double width, double height,
                            double radius) {
    out_.begin("rect", class_name).attribute("x", x).attribute("y", y);
    out_.attribute("width", width).attribute("height", height);
    if (radius > 0) out_.attribute("rx", radius);
    out_.end_void();
}

void svg_drawing::line(std::string_view class_name, point from, point to) {
    out_.begin("line", class_name).attribute("x1", from.x).attribute("y1", from.y);
    out_.attribute("x2", to.x).attribute("y2", to.y);
    out_.end_void();
}

void svg_drawing::polygon(std::string_view class_name, std::span<const point> all) {
    corners("polygon", class_name, all);
}

void svg_drawing::polyline(std::string_view class_name, std::span<const point> all) {
    corners("polyline", class_name, all);
}

void svg_drawing::corners(std::string_view element, std::string_view class_name, std::span<const point> all) {
    std::string list;
    append_points(list, all);
    out_.begin(element, class_name).attribute("points", list);
    out_.end_void();
}

void svg_drawing::circle(std::string_view class_name, point center, double radius, std::string_view tip) {
    out_.begin("circle", class_name).attribute("cx", center.x).attribute("cy", center.y).attribute("r", radius);
    if (tip.empty()) return out_.end_void();
    out_.element("title", tip);
    out_.end();
}

void svg_drawing::text(std::string_view class_name, point at, anchor where, std::string_view words) {
    constexpr std::array<std::string_view, 3> names = {"start", "middle", "end"};
    out_.begin("text", class_name).attribute("x", at.x).attribute("y", at.y);
    if (where != anchor::start) out_.attribute("text-anchor", names.at(static_cast<std::size_t>(where)));
    out_.text(words);
    out_.end();
}

} // namespace desk::drawing
