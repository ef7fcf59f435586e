#include "qt/desk_style.h"
#include "qt/drawing.h"
#include "qt/metrics.h"

#include <QVariant>
#include <QWidget>

namespace desk::qt {

namespace {

/// Part of the bar along its length.
QRect stretch(const QStyleOptionSlider& bar, int from, int length) {
    const QRect& whole = bar.rect;
    if (bar.orientation == Qt::Horizontal) return {whole.left() + from, whole.top(), length, whole.height()};
    return {whole.left(), whole.top() + from, whole.width(), length};
}

void draw_arrow(const sketch& s, const QStyleOptionSlider& bar, QStyle::SubControl part, Qt::ArrowType points_to) {
    const bool at_end =
        part == QStyle::SC_ScrollBarSubLine ? bar.sliderPosition <= bar.minimum : bar.sliderPosition >= bar.maximum;
    QStyleOption arrow = bar;
    arrow.rect = scroll_bar_part(part, bar, s.widget);
    if (bar.activeSubControls != part) arrow.state &= ~(QStyle::State_MouseOver | QStyle::State_Sunken);
    const sketch on_it(s.painter, arrow, s.widget);
    on_it.box(arrow.rect, on_it.face(), on_it.outline(), metric::radius);
    on_it.chevron(arrow.rect, points_to, s.enabled() && !at_end ? s.colors.text : s.colors.disabled);
}

void draw_slider(const sketch& s, const QStyleOptionSlider& bar) {
    draw_arrow(s, bar, QStyle::SC_ScrollBarSubLine, Qt::LeftArrow);
    draw_arrow(s, bar, QStyle::SC_ScrollBarAddLine, Qt::RightArrow);
    const QRectF handle(scroll_bar_part(QStyle::SC_ScrollBarSlider, bar, s.widget));
    QRectF groove(scroll_bar_part(QStyle::SC_ScrollBarGroove, bar, s.widget));
    const double inset = 4 * s.scale;
    const double thick = metric::slider_groove * s.scale;
    groove = QRectF(groove.left() + inset, groove.center().y() - thick / 2, groove.width() - 2 * inset, thick);
    s.box(groove, s.enabled() ? s.colors.pressed : s.colors.window,
          s.enabled() ? s.colors.strong_border : s.colors.border, metric::slider_groove / 2);
    if (s.enabled()) {
        QRectF reached = groove;
        reached.setRight(handle.center().x());
        s.box(reached, s.colors.accent, {}, metric::slider_groove / 2);
    }
    const double side = metric::slider_handle * s.scale;
    QRectF knob(0, 0, side, side);
    knob.moveCenter(handle.center());
    const bool held = bar.activeSubControls == QStyle::SC_ScrollBarSlider &&
                      (s.is(QStyle::State_Sunken) || s.is(QStyle::State_MouseOver));
    const QColor fill = !s.enabled() ? s.colors.window : held ? s.colors.accent : s.colors.surface;
    s.box(knob, fill, s.enabled() ? s.colors.accent : s.colors.border, metric::slider_handle / 2);
    if (s.enabled() && !held) {
        const double ring = 1.5 * s.scale;
        s.box(knob.adjusted(ring / 2, ring / 2, -ring / 2, -ring / 2), {}, s.colors.accent, metric::slider_handle / 2);
    }
}

} // namespace

bool is_slider(const QWidget* bar) { return bar != nullptr && bar->property(desk_style::slider).toBool(); }

void draw_scroll_bar(const sketch& s, const QStyleOptionSlider& bar) {
    if (is_slider(s.widget)) {
        draw_slider(s, bar);
        return;
    }
    s.painter.fillRect(bar.rect, s.colors.surface);
    if (bar.maximum <= bar.minimum) return;
    const QRect thumb = scroll_bar_part(QStyle::SC_ScrollBarSlider, bar, s.widget);
    const bool across = bar.orientation == Qt::Horizontal;
    const double inset = ((across ? thumb.height() : thumb.width()) - metric::scroll_thumb * s.scale) / 2;
    const double end = 2 * s.scale;
    const QRectF drawn =
        across ? QRectF(thumb).adjusted(end, inset, -end, -inset) : QRectF(thumb).adjusted(inset, end, -inset, -end);
    const bool at_it = bar.activeSubControls == QStyle::SC_ScrollBarSlider && s.enabled() &&
                       (s.is(QStyle::State_MouseOver) || s.is(QStyle::State_Sunken));
    s.box(drawn, at_it ? s.colors.secondary : s.colors.strong_border, {}, metric::scroll_thumb / 2);
}

QRect scroll_bar_part(QStyle::SubControl part, const QStyleOptionSlider& bar, const QWidget* widget) {
    const int whole = bar.orientation == Qt::Horizontal ? bar.rect.width() : bar.rect.height();
    const bool slides = is_slider(widget);
    const int arrow = slides ? std::min(scaled(metric::slider_arrow, widget), whole / 3) : 0;
    const int room = whole - 2 * arrow;
    int handle = slides ? scaled(metric::slider_handle, widget) : room;
    if (!slides && bar.maximum > bar.minimum) {
        const auto range = static_cast<long long>(bar.maximum) - bar.minimum;
        const auto share = static_cast<long long>(bar.pageStep) * room / (range + bar.pageStep);
        handle = std::clamp(static_cast<int>(share), std::min(scaled(metric::shortest_thumb, widget), room), room);
    }
    const int at = arrow + QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, room - handle,
                                                           bar.upsideDown);
    switch (part) {
    case QStyle::SC_ScrollBarSubLine:
        return stretch(bar, 0, arrow);
    case QStyle::SC_ScrollBarAddLine:
        return stretch(bar, whole - arrow, arrow);
    case QStyle::SC_ScrollBarSubPage:
        return stretch(bar, arrow, at - arrow);
    case QStyle::SC_ScrollBarAddPage:
        return stretch(bar, at + handle, whole - arrow - at - handle);
    case QStyle::SC_ScrollBarGroove:
        return stretch(bar, arrow, room);
    case QStyle::SC_ScrollBarSlider:
        return stretch(bar, at, handle);
    default:
        return {};
    }
}

} // namespace desk::qt
