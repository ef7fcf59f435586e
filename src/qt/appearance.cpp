#include "qt/appearance.h"

#include "qt/accessible.h"
#include "qt/application_font.h"
#include "qt/decoration.h"
#include "qt/desk_style.h"
#include "qt/metrics.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QIcon>
#include <QPalette>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace desk::qt {

namespace {

constexpr int body_pixels = 13;
constexpr int cell_text_pixels = 13;
constexpr int mark_pixels = 28;

/// The relative luminance of WCAG 2.
double luminance(const QColor& c) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

} // namespace

void set_appearance(QApplication& application, scheme s) {
    for (const char* file : {":/fonts/LiberationSans-Regular.ttf", ":/fonts/LiberationSans-Bold.ttf",
                             ":/fonts/LiberationMono-Regular.ttf"})
        QFontDatabase::addApplicationFont(file);
    application.setStyle(new desk_style);
    set_scheme(s);
    new application_font(application, font_of(text_font::sans));
    new focus_ring(application);
    make_accessible();
    application.setWindowIcon(QIcon(":/pictures/velotrace.png"));
}

void set_scheme(scheme s) {
    const QPalette palette = palette_of(s);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

int text_pixels(text_font font, double scale) {
    const int at_1 = font == text_font::large_bold ? mark_pixels
                     : font == text_font::fixed    ? cell_text_pixels
                     : font == text_font::small    ? metric::small_text
                                                   : body_pixels;
    return std::max(1, static_cast<int>(at_1 * scale));
}

QFont font_of(text_font font, double scale) {
    QFont f(font == text_font::fixed ? "Liberation Mono" : "Liberation Sans");
    f.setPixelSize(text_pixels(font, scale));
    f.setBold(font == text_font::large_bold);
    f.setHintingPreference(QFont::PreferNoHinting);
    if (font == text_font::fixed) {
        f.setStyleHint(QFont::Monospace);
        f.setLetterSpacing(QFont::AbsoluteSpacing, cell_width * scale - QFontMetricsF(f).horizontalAdvance('0'));
    }
    return f;
}

namespace {

QColor exact(color c) {
    return {static_cast<int>(c & 0xFFU), static_cast<int>((c >> 8U) & 0xFFU), static_cast<int>((c >> 16U) & 0xFFU)};
}

} // namespace

QColor ink_of(color c, const scheme_colors& s) { return c == color_black ? s.text : exact(c); }

QColor background_of(color c, const scheme_colors& s) {
    switch (c) {
    case color_button_face:
        return s.raised;
    case color_window:
        return s.window;
    case color_white:
        return s.surface;
    case color_readout:
        return s.readout;
    default:
        return exact(c);
    }
}

double contrast(const QColor& a, const QColor& b) {
    const double light = luminance(a);
    const double other = luminance(b);
    return (std::max(light, other) + 0.05) / (std::min(light, other) + 0.05);
}

QString shown_text(std::string_view text) {
    QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return shown.replace("\r\n", "\n").replace('\r', '\n');
}

std::size_t shown_length(std::string_view text) {
    std::size_t length = 0;
    char last = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool continues = (byte & 0xC0U) == 0x80;
        const bool second_of_line_end = c == '\n' && last == '\r';
        if (!continues && !second_of_line_end) length += byte >= 0xF0 ? 2 : 1;
        last = c;
    }
    return length;
}

} // namespace desk::qt
