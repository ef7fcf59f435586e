#include "qt/look.h"

#include "qt/accessible.h"
#include "qt/desk_style.h"
#include "qt/steady_font.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace desk::qt {

namespace {

constexpr int body_pixels = 12;
constexpr int cell_text_pixels = 13;
constexpr int mark_pixels = 30;

QPalette grey_palette() {
    const QColor grey = color_of(color_window);
    QPalette palette(grey, grey);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0, 0, 128));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Base, grey);
    // readable at arm's length also while it is disabled
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, QColor(78, 78, 78));
    return palette;
}

/// The relative luminance of WCAG 2.
double luminance(const QColor& c) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

} // namespace

void set_look(QApplication& application) {
    for (const char* file : {":/fonts/LiberationSans-Regular.ttf", ":/fonts/LiberationSans-Bold.ttf",
                             ":/fonts/LiberationMono-Regular.ttf"})
        QFontDatabase::addApplicationFont(file);
    // the title of a frame stands on its border
    application.setStyle(new desk_style);
    application.setPalette(grey_palette());
    new steady_font(application, font_of(text_font::sans));
    make_accessible();
    application.setWindowIcon(QIcon(":/pictures/velotrace.png"));
}

int text_pixels(text_font font, double scale) {
    const int at_1 = font == text_font::large_bold ? mark_pixels
                     : font == text_font::fixed    ? cell_text_pixels
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

QColor color_of(color c) {
    if (c == color_button_face) c = color_window;
    return {static_cast<int>(c & 0xFFU), static_cast<int>((c >> 8U) & 0xFFU), static_cast<int>((c >> 16U) & 0xFFU)};
}

void draw_focus(QWidget& w) {
    QPainter painter(&w);
    painter.setPen(QPen(QColor(0, 0, 128), 2));
    painter.drawRect(w.rect().adjusted(1, 1, -1, -1));
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
