#include "qt/drawing.h"
#include "qt/metrics.h"

namespace desk::qt {

void draw_row(const sketch& s) {
    if (s.is(QStyle::State_Selected))
        s.painter.fillRect(s.option.rect, s.enabled() ? s.colors.accent : s.colors.pressed);
    else if (s.hovered())
        s.painter.fillRect(s.option.rect, s.colors.hover);
}

QRect row_part(QStyle::SubElement part, const QStyleOptionViewItem& row, const QWidget* widget) {
    const bool checkable = (row.features & QStyleOptionViewItem::HasCheckIndicator) != 0;
    const QRect& whole = row.rect;
    const int inset = scaled(metric::row_inset / 2, widget);
    const int check = checkable ? inset + scaled(metric::check_hit, widget) : 0;
    if (part == QStyle::SE_ItemViewItemText) return whole.adjusted(check + inset, 0, 0, 0);
    return checkable ? QRect(whole.left() + inset, whole.top(), check - inset, whole.height()) : QRect();
}

void draw_header_section(const sketch& s) {
    const QRectF place(s.option.rect);
    s.painter.fillRect(place, s.colors.window);
    s.painter.fillRect(QRectF(place.left(), place.bottom() - s.line, place.width(), s.line), s.colors.border);
    const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(&s.option);
    if (header == nullptr) return;
    const bool last =
        header->position == QStyleOptionHeader::End || header->position == QStyleOptionHeader::OnlyOneSection;
    if (last) return;
    const double gap = 5 * s.scale;
    s.painter.fillRect(QRectF(place.right() - s.line, place.top() + gap, s.line, place.height() - 2 * gap),
                       s.colors.border);
}

void draw_branch(const sketch& s) {
    if (!s.is(QStyle::State_Children)) return;
    const QColor color = s.is(QStyle::State_Selected) ? s.colors.on_accent
                         : s.hovered()                ? s.colors.text
                                                      : s.colors.secondary;
    s.chevron(s.option.rect, s.is(QStyle::State_Open) ? Qt::DownArrow : Qt::RightArrow, color);
}

} // namespace desk::qt
