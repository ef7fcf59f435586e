#include "visibility.h"

#include "qt/drawing.h"
#include "qt/plan_scale.h"
#include "qt/text_label.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QGroupBox>
#include <QImage>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>

#include <cstdlib>

namespace desk::gui {

namespace {

QRect place_in(const QWidget& window, const QWidget& w) { return {w.mapTo(&window, QPoint(0, 0)), w.size()}; }

} // namespace

bool covers_text(const ui_driver& ui, const QString& box, const QString& over) {
    auto& text = ui.find<QTextEdit>(box);
    const QFontMetrics metrics(text.font());
    const QRect place = place_in(*text.window(), ui.find(over));
    for (QTextBlock line = text.document()->begin(); line.isValid(); line = line.next()) {
        for (int i = 0; i < line.length() - 1; ++i) {
            if (line.text().at(i).isSpace()) continue;
            QTextCursor cursor(line);
            cursor.setPosition(line.position() + i);
            const QPoint cell = text.viewport()->mapTo(text.window(), text.cursorRect(cursor).topLeft());
            const QRect ink = metrics.boundingRect(line.text().at(i));
            if (place.intersects(ink.translated(cell + QPoint(0, metrics.ascent())))) return true;
        }
    }
    return false;
}

bool has_title_beside(const ui_driver& ui, const QString& label, const QString& control) {
    auto& l = ui.find<qt::text_label>(label);
    const QRect beside = place_in(*l.window(), ui.find(control)).translated(-l.mapTo(l.window(), QPoint(0, 0)));
    const QImage seen = l.grab().toImage();
    const qreal scale = seen.devicePixelRatio();
    // the title is left of the control; the label's first pixels are its own background
    const auto has_ink = [&](int y) {
        for (int x = 0; x < beside.left() * scale; ++x) {
            if (seen.valid(x, y) && std::abs(qGray(seen.pixel(x, y)) - qGray(seen.pixel(0, 0))) > 60) return true;
        }
        return false;
    };
    const int top = qRound(beside.top() * scale);
    const int bottom = qRound((beside.bottom() + 1) * scale) - 1;
    if (has_ink(top) || has_ink(bottom)) return false;
    int first = top;
    while (first < bottom && !has_ink(first))
        ++first;
    int last = bottom;
    while (last > first && !has_ink(last))
        --last;
    return first < last && std::abs(first + last - top - bottom) <= 6 * scale * qt::plan_scale(&l);
}

QStringList clipped_captions(const QWidget& window) {
    QStringList cut;
    const auto check = [&](const QWidget& w, const QString& text, double space) {
        if (QFontMetricsF(w.font()).horizontalAdvance(text) + space * qt::plan_scale(&w) > w.width())
            cut << w.objectName();
    };
    for (const auto* b : window.findChildren<QAbstractButton*>()) {
        // the underline mark takes no room
        if (b->objectName().startsWith("cmd_")) check(*b, QString(b->text()).remove('&'), 10);
        if (b->objectName().startsWith("chk_") || b->objectName().startsWith("opt_"))
            check(*b, QString(b->text()).remove('&'), 18);
    }
    for (const auto* g : window.findChildren<QGroupBox*>())
        if (QFontMetricsF(qt::title_font(*g)).horizontalAdvance(g->title()) + 12 * qt::plan_scale(g) > g->width())
            cut << g->objectName();
    for (const auto* l : window.findChildren<qt::text_label*>()) {
        // long file names are elided
        if (l->objectName().startsWith("lab_pre_f")) continue;
        for (const QString& line : l->text().split('\n'))
            check(*l, line, 0);
    }
    return cut;
}

} // namespace desk::gui
