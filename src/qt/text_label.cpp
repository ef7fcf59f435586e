#include "qt/text_label.h"

#include "qt/appearance.h"
#include "qt/metrics.h"

#include <QGroupBox>
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

void text_label::set_colors(color fore, color back) {
    if (fore_ == fore && back_ == back) return;
    fore_ = fore;
    back_ = back;
    update();
}

QColor text_label::background() const {
    const scheme_colors& colors = colors_of(palette());
    if (back_ != color_button_face) return background_of(back_, colors);
    for (const QWidget* w = parentWidget(); w != nullptr; w = w->parentWidget())
        if (qobject_cast<const QGroupBox*>(w) != nullptr) return colors.surface;
    return colors.window;
}

void text_label::paintEvent(QPaintEvent* /*e*/) {
    QPainter painter(this);
    const scheme_colors& colors = colors_of(palette());
    const double scale = plan_scale(this);
    const double radius = metric::radius * scale;
    QRect place = rect();
    painter.setRenderHint(QPainter::Antialiasing);
    if (back_ != color_button_face) {
        const double line = hairline(this);
        painter.setPen(back_ == color_readout ? QPen(colors.border, line) : QPen(Qt::NoPen));
        painter.setBrush(background());
        painter.drawRoundedRect(QRectF(place).adjusted(line / 2, line / 2, -line / 2, -line / 2), radius, radius);
        const int side = scaled(metric::text_inset, this);
        place.adjust(side, scaled(2, this), -side, -scaled(2, this));
    }
    const QFontMetrics metrics = painter.fontMetrics();
    const QColor ink = ink_of(fore_, colors);
    if (!text_.isEmpty() && contrast(ink, background()) < readable_contrast) {
        // a model colour that is unreadable here gets a plate of its own
        const QColor plate = contrast(ink, on_lamp()) > contrast(ink, Qt::white) ? on_lamp() : QColor(Qt::white);
        const int side = scaled(metric::text_inset, this);
        QRect behind(0, 0, metrics.horizontalAdvance(text_) + 2 * side, metrics.height());
        if (in_middle_) behind.moveTop((height() - behind.height()) / 2);
        painter.setPen(Qt::NoPen);
        painter.setBrush(plate);
        painter.drawRoundedRect(behind, radius, radius);
        place.adjust(side, 0, 0, 0);
    }
    painter.setPen(isEnabled() ? ink : colors.disabled);
    draw_lines(painter, place);
}

void text_label::draw_lines(QPainter& painter, const QRect& place) const {
    const QFontMetrics metrics = painter.fontMetrics();
    const Qt::Alignment place_of_text = Qt::AlignLeft | (in_middle_ ? Qt::AlignVCenter : Qt::AlignTop);
    const int at = static_cast<int>(place_of_text.toInt());
    // a label with room for one line elides the middle, as for a path
    if (line_pitch_ == 0 && place.height() < 2 * metrics.height()) {
        painter.drawText(place, at | Qt::TextSingleLine, metrics.elidedText(text_, Qt::ElideMiddle, place.width()));
        return;
    }
    if (line_pitch_ == 0) {
        painter.drawText(place, at | Qt::TextWordWrap, text_);
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
