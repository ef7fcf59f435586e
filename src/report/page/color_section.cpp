#include "drawing/color_diagram.h"
#include "report/page/sections.h"
#include "report/page/words.h"

namespace desk::page {

namespace {

using drawing::chromaticity_point;
using drawing::color_triangle;
using drawing::number_text;

chromaticity_point point_of(facts::color_point p) { return {p.x, p.y}; }

std::string percent(double part) { return drawing::fixed_text(100 * part, 1) + " %"; }

void write_sample(markup_writer& out, std::string_view class_name) {
    out.begin("svg", "sample").attribute("xmlns", "http://www.w3.org/2000/svg").attribute("viewBox", "0 0 28 10");
    out.attribute("aria-hidden", "true");
    out.begin("line", "gamut " + std::string(class_name));
    out.attribute("x1", 1).attribute("y1", 5).attribute("x2", 27).attribute("y2", 5).end_void();
    out.end();
}

void write_row(markup_writer& out, std::string_view class_name, std::string_view name, std::string_view covered,
               std::string_view area) {
    out.begin("tr");
    out.begin("th").attribute("scope", "row");
    write_sample(out, class_name);
    out.text(name).end();
    out.element("td", "number", covered);
    out.element("td", "number", area);
    out.end();
}

void write_coverage(markup_writer& out, const color_triangle& display) {
    begin_table(out, "coverage", "Coverage of colour spaces in the CIE 1931 diagram");
    table_head(out, {"Colour space", "#Covered", "#Relative area"});
    out.begin("tbody");
    write_row(out, "own", "This display", "", "");
    for (const drawing::standard_gamut& gamut : drawing::standard_gamuts())
        write_row(out, gamut.class_name, gamut.name, percent(drawing::coverage(display, gamut.primaries)),
                  percent(area_of(display) / area_of(gamut.primaries)));
    out.end();
    end_table(out);
}

void write_points(markup_writer& out, const facts::chromaticity& colors) {
    begin_table(out, "points", "Primaries and white");
    table_head(out, {"Point", "#x", "#y"});
    out.begin("tbody");
    const auto row = [&](std::string_view name, facts::color_point p) {
        out.begin("tr");
        out.begin("th").attribute("scope", "row").text(name).end();
        out.begin("td", "number").fixed(p.x, 4).end();
        out.begin("td", "number").fixed(p.y, 4).end();
        out.end();
    };
    row("Red", colors.red);
    row("Green", colors.green);
    row("Blue", colors.blue);
    row("White", colors.white);
    out.end();
    end_table(out);
}

} // namespace

void write_color(markup_writer& out, const page_source& source) {
    begin_section(out, "colour", "Colour");
    if (!source.facts.colors) {
        out.element("p", "quiet", "The EDID states no colour characteristics.");
        return out.end();
    }
    const facts::chromaticity& colors = *source.facts.colors;
    const color_triangle display = {point_of(colors.red), point_of(colors.green), point_of(colors.blue)};
    const chromaticity_point white = point_of(colors.white);
    out.begin("div", "columns");
    out.begin("figure");
    drawing::draw_color_diagram(out, display, white,
                                "CIE 1931 diagram with the spectral locus, the triangle and the white point of the "
                                "display, and the triangles of sRGB, DCI-P3 and BT.2020. The tables have the figures.");
    out.end();
    out.begin("div");
    write_coverage(out, display);
    write_points(out, colors);
    out.begin("dl", "facts");
    if (const auto kelvin = drawing::color_temperature(white))
        describe(out, "White", "about " + number_text(*kelvin / 100, 0) + "00 K");
    if (source.facts.gamma) describe(out, "Gamma", number_text(*source.facts.gamma, 2));
    if (source.facts.srgb_default) describe(out, "Default colour space", "sRGB");
    out.end();
    out.end();
    out.end();
    out.end();
}

} // namespace desk::page
