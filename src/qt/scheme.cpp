#include "qt/scheme.h"

#include <QPalette>

namespace desk::qt {

namespace {

const scheme_colors light_colors = {
    .window = 0xF2F3F5,
    .surface = 0xFFFFFF,
    .raised = 0xFAFBFC,
    .hover = 0xEEF1F5,
    .pressed = 0xE1E6EC,
    .border = 0xD3D8DF,
    .strong_border = 0x9AA4B1,
    .text = 0x1A1D21,
    .secondary = 0x4D5661,
    .disabled = 0x636C78,
    .accent = 0x1F5FBF,
    .on_accent = 0xFFFFFF,
    .readout = 0xEDF1F6,
    .difference = 0xFFE9A8,
    .shadow = QColor(20, 26, 36, 4),
};

const scheme_colors dark_colors = {
    .window = 0x17191D,
    .surface = 0x1F2228,
    .raised = 0x2A2E36,
    .hover = 0x333843,
    .pressed = 0x3D4450,
    .border = 0x3A404A,
    .strong_border = 0x626C7A,
    .text = 0xE8EBF0,
    .secondary = 0xB3BBC6,
    .disabled = 0x8E97A3,
    .accent = 0x5B9BF0,
    .on_accent = 0x101214,
    .readout = 0x12151A,
    .difference = 0x5A4A14,
    .shadow = QColor(0, 0, 0, 14),
};

} // namespace

const scheme_colors& colors_of(scheme s) { return s == scheme::dark ? dark_colors : light_colors; }

scheme scheme_of(const QPalette& p) {
    const auto lightness = [&p](QPalette::ColorRole role) { return p.color(QPalette::Active, role).lightness(); };
    return lightness(QPalette::Window) < lightness(QPalette::WindowText) ? scheme::dark : scheme::light;
}

const scheme_colors& colors_of(const QPalette& p) { return colors_of(scheme_of(p)); }

QPalette palette_of(scheme s) {
    const scheme_colors& c = colors_of(s);
    QPalette p(c.raised, c.window);
    p.setColor(QPalette::Base, c.surface);
    p.setColor(QPalette::AlternateBase, c.window);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText, QPalette::BrightText})
        p.setColor(role, c.text);
    p.setColor(QPalette::PlaceholderText, c.secondary);
    p.setColor(QPalette::ToolTipBase, c.surface);
    p.setColor(QPalette::Highlight, c.accent);
    p.setColor(QPalette::HighlightedText, c.on_accent);
    p.setColor(QPalette::Link, c.accent);
    p.setColor(QPalette::LinkVisited, c.accent);
    p.setColor(QPalette::Light, c.surface);
    p.setColor(QPalette::Midlight, c.hover);
    p.setColor(QPalette::Mid, c.border);
    p.setColor(QPalette::Dark, c.strong_border);
    p.setColor(QPalette::Shadow, c.strong_border);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, c.disabled);
    p.setColor(QPalette::Disabled, QPalette::Base, c.surface);
    p.setColor(QPalette::Disabled, QPalette::Highlight, c.pressed);
    p.setColor(QPalette::Disabled, QPalette::HighlightedText, c.text);
    return p;
}

QColor on_lamp() { return 0x101214; }

} // namespace desk::qt
