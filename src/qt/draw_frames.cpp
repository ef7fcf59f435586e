#include "controls/controls.h"
#include "qt/desk_style.h"
#include "qt/drawing.h"
#include "qt/metrics.h"

#include <QFontMetrics>
#include <QVariant>
#include <QWidget>

namespace desk::qt {

namespace {

frame_kind kind_of(const QWidget* group) {
    const QVariant kind = group == nullptr ? QVariant() : group->property(desk_style::kind_of_frame);
    return kind.isValid() ? static_cast<frame_kind>(kind.toInt()) : frame_kind::group;
}

} // namespace

QFont title_font(const QWidget& group) {
    QFont font = group.font();
    const int pixels = kind_of(&group) == frame_kind::group ? metric::small_text : metric::title_text;
    font.setPixelSize(std::max(1, static_cast<int>(pixels * plan_scale(&group))));
    font.setBold(true);
    return font;
}

QRect title_place(const QStyleOptionGroupBox& group, const QWidget& widget) {
    const frame_kind kind = kind_of(&widget);
    const bool small = kind == frame_kind::group;
    const QFontMetrics metrics(title_font(widget));
    const int left = scaled(small                      ? metric::group_title_left
                            : kind == frame_kind::page ? metric::page_title_left
                                                       : metric::title_left,
                            &widget);
    const int top = scaled(small ? metric::group_title_top : metric::title_top, &widget);
    return {group.rect.left() + left, group.rect.top() + top, group.rect.width() - left, metrics.height()};
}

void draw_group(const sketch& s, const QStyleOptionGroupBox& group) {
    const frame_kind kind = kind_of(s.widget);
    switch (kind) {
    case frame_kind::page:
        // it covers the inside of another frame, whose border stays visible
        s.painter.fillRect(group.rect, s.colors.surface);
        break;
    case frame_kind::overlay:
        s.box(group.rect, s.colors.surface, s.colors.strong_border, metric::radius + 2);
        break;
    default:
        s.box(group.rect, s.colors.surface, s.colors.border, metric::radius);
    }
    if (group.text.isEmpty() || s.widget == nullptr) return;
    s.painter.save();
    s.painter.setFont(title_font(*s.widget));
    s.painter.setPen(!s.enabled() ? s.colors.disabled : kind == frame_kind::group ? s.colors.secondary : s.colors.text);
    s.painter.drawText(title_place(group, *s.widget), Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, group.text);
    s.painter.restore();
}

void draw_area_frame(const sketch& s) {
    s.box(s.option.rect, s.colors.surface, s.colors.strong_border, metric::radius);
}

void draw_line(const sketch& s) {
    const QRectF place(s.option.rect);
    if (place.width() >= place.height())
        s.painter.fillRect(QRectF(place.left(), place.top(), place.width(), s.line), s.colors.border);
    else
        s.painter.fillRect(QRectF(place.left(), place.top(), s.line, place.height()), s.colors.border);
}

void draw_tool_tip(const sketch& s) {
    s.painter.fillRect(s.option.rect, s.colors.surface);
    s.painter.setPen(QPen(s.colors.strong_border, 1));
    s.painter.drawRect(s.option.rect.adjusted(0, 0, -1, -1));
}

} // namespace desk::qt
