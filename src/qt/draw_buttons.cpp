#include "qt/drawing.h"
#include "qt/metrics.h"

#include <QPalette>
#include <QPolygonF>

namespace desk::qt {

namespace {

QRectF square_in(const QRect& place, double side) {
    const double fits = std::min({side, static_cast<double>(place.height()), static_cast<double>(place.width())});
    QRectF square(0, 0, fits, fits);
    square.moveCenter(QRectF(place).center());
    return {std::floor(square.left()), std::floor(square.top()), fits, fits};
}

} // namespace

void draw_button(const sketch& s) {
    const QColor lamp = s.option.palette.color(QPalette::Active, QPalette::Button);
    const bool lit = lamp != s.colors.raised;
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&s.option);
    const bool is_default = button != nullptr && (button->features & QStyleOptionButton::DefaultButton) != 0;
    QColor border = is_default ? s.colors.accent : s.outline();
    QColor fill = s.face();
    if (lit) {
        // the lamp's colour is a state and never changes; the border shows hover
        fill = lamp;
        border = s.hovered() || s.is(QStyle::State_Sunken) ? s.colors.text : lamp.darker(170);
    }
    s.box(s.option.rect, fill, border, metric::radius);
    if (lit && s.is(QStyle::State_Sunken)) {
        const double inset = 2 * s.scale;
        s.box(QRectF(s.option.rect).adjusted(inset, inset, -inset, -inset), {}, on_lamp(), metric::radius - 1);
    }
}

void draw_tool_button(const sketch& s) {
    if (s.hovered() || s.is(QStyle::State_On) || s.is(QStyle::State_Sunken))
        s.box(s.option.rect, s.is(QStyle::State_Sunken) || s.is(QStyle::State_On) ? s.colors.pressed : s.colors.hover,
              s.colors.border, metric::radius);
}

void draw_check_mark(const sketch& s) {
    // keep a gap between boxes that are close together
    const bool crowded = s.option.rect.height() < metric::check_mark * s.scale + s.line;
    const QRectF square = square_in(s.option.rect, (metric::check_mark - (crowded ? 2 : 0)) * s.scale);
    const bool checked = s.is(QStyle::State_On);
    QColor fill = s.enabled() ? s.colors.surface : s.colors.window;
    QColor border = s.hovered() ? s.colors.accent : s.enabled() ? s.colors.strong_border : s.colors.border;
    if (checked) fill = s.enabled() ? s.colors.accent : s.colors.disabled;
    if (checked) border = fill;
    // on a selected row the box would not be visible
    if (s.is(QStyle::State_Selected)) border = s.colors.on_accent;
    s.box(square, fill, border, 3);
    if (!checked) return;
    const double unit = square.width() / 16;
    s.painter.save();
    s.painter.setRenderHint(QPainter::Antialiasing);
    s.painter.translate(square.topLeft());
    s.painter.setPen(QPen(s.enabled() ? s.colors.on_accent : s.colors.surface, 2 * unit, Qt::SolidLine, Qt::RoundCap,
                          Qt::RoundJoin));
    s.painter.drawPolyline(QPolygonF({{4 * unit, 8.4 * unit}, {6.9 * unit, 11.2 * unit}, {12 * unit, 5 * unit}}));
    s.painter.restore();
}

void draw_option_mark(const sketch& s) {
    const QRectF square = square_in(s.option.rect, metric::check_mark * s.scale);
    const bool chosen = s.is(QStyle::State_On);
    const QColor mark = s.enabled() ? s.colors.accent : s.colors.disabled;
    const QColor border = chosen || s.hovered() ? mark : s.enabled() ? s.colors.strong_border : s.colors.border;
    s.box(square, s.enabled() ? s.colors.surface : s.colors.window, border, metric::check_mark / 2);
    if (!chosen) return;
    s.painter.save();
    s.painter.setRenderHint(QPainter::Antialiasing);
    s.painter.setPen(Qt::NoPen);
    s.painter.setBrush(mark);
    const double inset = 4 * s.scale;
    s.painter.drawEllipse(square.adjusted(inset, inset, -inset, -inset));
    s.painter.restore();
}

void draw_text_field(const sketch& s) {
    // a display-only box looks like the read-outs
    const bool shows = s.is(QStyle::State_ReadOnly);
    const QColor fill = shows ? s.colors.readout : s.enabled() ? s.colors.surface : s.colors.window;
    s.box(s.option.rect, fill, shows ? s.colors.border : s.outline(), metric::radius);
}

void draw_combo_box(const sketch& s, const QStyleOptionComboBox& combo, const QRect& arrow) {
    if (combo.frame) s.box(s.option.rect, s.face(), s.outline(), metric::radius);
    s.chevron(arrow, Qt::DownArrow, s.enabled() ? s.colors.secondary : s.colors.disabled);
}

QRect combo_box_part(QStyle::SubControl part, const QStyleOptionComboBox& combo, const QWidget* widget) {
    const int arrow = scaled(metric::combo_arrow, widget);
    const QRect& whole = combo.rect;
    switch (part) {
    case QStyle::SC_ComboBoxArrow:
        return {whole.right() - arrow + 1, whole.top(), arrow, whole.height()};
    case QStyle::SC_ComboBoxEditField:
        return whole.adjusted(scaled(metric::text_inset, widget), 1, -arrow, -1);
    case QStyle::SC_ComboBoxListBoxPopup:
    default:
        return whole;
    }
}

} // namespace desk::qt
