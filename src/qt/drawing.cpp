#include "qt/drawing.h"

#include "qt/metrics.h"

#include <QPolygonF>
#include <QWidget>

namespace desk::qt {

sketch::sketch(QPainter& on, const QStyleOption& what, const QWidget* in)
    : painter(on)
    , option(what)
    , widget(in)
    , colors(colors_of(what.palette))
    , scale(plan_scale(in))
    , line(hairline(in)) {}

QColor sketch::outline() const {
    if (!enabled()) return colors.border;
    return hovered() ? colors.secondary : colors.strong_border;
}

QColor sketch::face() const {
    if (!enabled()) return colors.window;
    if (is(QStyle::State_Sunken)) return colors.pressed;
    return hovered() ? colors.hover : colors.raised;
}

void sketch::box(const QRectF& place, const QColor& fill, const QColor& border, double radius) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.setPen(border.isValid() ? QPen(border, line) : QPen(Qt::NoPen));
    const double inset = border.isValid() ? line / 2 : 0;
    painter.drawRoundedRect(place.adjusted(inset, inset, -inset, -inset), radius * scale, radius * scale);
    painter.restore();
}

void sketch::chevron(const QRectF& place, Qt::ArrowType points_to, const QColor& color) const {
    const double half = metric::chevron * scale;
    QPolygonF shape;
    switch (points_to) {
    case Qt::LeftArrow:
        shape = {{half / 2, -half}, {-half / 2, 0}, {half / 2, half}};
        break;
    case Qt::RightArrow:
        shape = {{-half / 2, -half}, {half / 2, 0}, {-half / 2, half}};
        break;
    case Qt::UpArrow:
        shape = {{-half, half / 2}, {0, -half / 2}, {half, half / 2}};
        break;
    default:
        shape = {{-half, -half / 2}, {0, half / 2}, {half, -half / 2}};
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.center());
    painter.setPen(QPen(color, 1.6 * scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(shape);
    painter.restore();
}

} // namespace desk::qt
