#include "qt/elided_text.h"

#include "qt/text_label.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionViewItem>

namespace desk::qt {

namespace {

/// Border and padding at each end of a box.
constexpr int inset = 8;

bool has_no_room(const QWidget& w, const QString& text, int width) {
    return w.fontMetrics().horizontalAdvance(text) > width;
}

QString elided_in(const text_label& label) {
    const QString& text = label.text();
    const QFontMetrics metrics = label.fontMetrics();
    if (label.height() < 2 * metrics.height() && !text.contains('\n'))
        return has_no_room(label, text, label.width() - inset) ? text : QString();
    const QRect needed = metrics.boundingRect(QRect(0, 0, label.width(), 0), Qt::TextWordWrap, text);
    return needed.height() > label.height() && !label.has_line_pitch() ? text : QString();
}

QString elided_in(const QComboBox& combo) {
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    const QRect room =
        combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
    return has_no_room(combo, combo.currentText(), room.width() - 4) ? combo.currentText() : QString();
}

QString elided_in(const QAbstractItemView& view, QPoint at) {
    const QModelIndex index = view.indexAt(at);
    if (!index.isValid()) return {};
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.font = view.font();
    option.decorationPosition = QStyleOptionViewItem::Left;
    const int needed = view.itemDelegateForIndex(index)->sizeHint(option, index).width();
    const QRect cell = view.visualRect(index);
    return needed > (cell & view.viewport()->rect()).width() ? index.data().toString() : QString();
}

/// A frame's title takes its full width; controls below it show their own texts.
QString elided_in(const QGroupBox& frame, QPoint at) {
    if (at.y() > frame.fontMetrics().height() * 2) return {};
    return has_no_room(frame, frame.title(), frame.width() - 2 * inset) ? frame.title() : QString();
}

} // namespace

QString elided_text_at(QWidget& w, QPoint at) {
    if (const auto* const label = qobject_cast<text_label*>(&w)) return elided_in(*label);
    if (const auto* const combo = qobject_cast<QComboBox*>(&w)) return elided_in(*combo);
    if (const auto* const frame = qobject_cast<QGroupBox*>(&w)) return elided_in(*frame, at);
    if (const auto* const line = qobject_cast<QLineEdit*>(&w))
        return has_no_room(*line, line->text(), line->width() - inset) ? line->text() : QString();
    if (const auto* const view = qobject_cast<QAbstractItemView*>(&w))
        return elided_in(*view, view->viewport()->mapFrom(view, at));
    // a list's viewport
    if (const auto* const view = qobject_cast<QAbstractItemView*>(w.parentWidget())) return elided_in(*view, at);
    return {};
}

} // namespace desk::qt
