#include "qt/text_label.h"

#include "qt/look.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStringList>
#include <QtMath>

namespace desk::qt {

text_label::text_label(QWidget* parent) : QWidget(parent) {}

void text_label::set_text(const QString& text) {
    if (text_ == text) return;
    text_ = text;
    update();
}

void text_label::set_colors(const QColor& fore, const std::optional<QColor>& back) {
    if (fore_ == fore && back_ == back) return;
    fore_ = fore;
    back_ = back;
    update();
}

void text_label::paintEvent(QPaintEvent* /*e*/) {
    draw_text();
    if (hasFocus()) draw_focus(*this);
}

void text_label::draw_text() {
    QPainter painter(this);
    QRect place = rect();
    if (back_) {
        painter.fillRect(place, *back_);
        painter.setPen(back_->darker(160));
        painter.drawRect(place.adjusted(0, 0, -1, -1));
        place.adjust(4, 2, -4, -2);
    }
    const QFontMetrics metrics = painter.fontMetrics();
    if (!back_ && !text_.isEmpty() && contrast(fore_, palette().color(QPalette::Window)) < readable_contrast) {
        // on black, red is too dark for eyes that do not see it
        const QColor plate = fore_.red() > fore_.green() ? Qt::white : Qt::black;
        painter.fillRect(0, 0, metrics.horizontalAdvance(text_) + 8, metrics.height(), plate);
        place.adjust(4, 0, 0, 0);
    }
    painter.setPen(isEnabled() ? fore_ : palette().color(QPalette::Disabled, QPalette::WindowText));
    // one that has room for a single line shows both ends of a long one, as of a path
    if (line_pitch_ == 0 && place.height() < 2 * metrics.height()) {
        painter.drawText(place, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                         metrics.elidedText(text_, Qt::ElideMiddle, place.width()));
        return;
    }
    if (line_pitch_ == 0) {
        painter.drawText(place, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text_);
        return;
    }
    const double first_line = place.top() + (line_pitch_ - metrics.height()) / 2 + metrics.ascent();
    const QStringList lines = text_.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i)
        painter.drawText(place.left(), qFloor(first_line + static_cast<double>(i) * line_pitch_), lines[i]);
}

void text_label::mouseReleaseEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()) && on_click) on_click();
}

void text_label::keyPressEvent(QKeyEvent* e) {
    switch (e->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (on_click) on_click();
        break;
    default:
        QWidget::keyPressEvent(e);
    }
}

void text_label::mouseMoveEvent(QMouseEvent* /*e*/) {
    if (on_move) on_move();
}

} // namespace desk::qt
