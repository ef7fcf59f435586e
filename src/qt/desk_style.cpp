#include "qt/desk_style.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace desk::qt {

namespace {

/// A sign in a square of 32 units; it differs from the others in its form, not in its colour alone.
void draw_sign(QPainter& painter, QStyle::StandardPixmap sign) {
    painter.setRenderHint(QPainter::Antialiasing);
    QFont letter("Liberation Sans");
    letter.setPixelSize(22);
    letter.setBold(true);
    painter.setFont(letter);
    const QRectF disc(2, 2, 28, 28);
    switch (sign) {
    case QStyle::SP_MessageBoxCritical:
        painter.setPen(QPen(Qt::black, 1));
        painter.setBrush(QColor(208, 0, 0));
        painter.drawEllipse(disc);
        painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(11, 11), QPointF(21, 21));
        painter.drawLine(QPointF(21, 11), QPointF(11, 21));
        break;
    case QStyle::SP_MessageBoxWarning:
        painter.setPen(QPen(Qt::black, 1));
        painter.setBrush(QColor(255, 208, 0));
        painter.drawPolygon(QPolygonF({{16, 2}, {31, 29}, {1, 29}}));
        painter.drawText(QRectF(2, 7, 28, 22), Qt::AlignCenter, "!");
        break;
    default:
        painter.setPen(QPen(Qt::black, 1));
        painter.setBrush(QColor(0, 0, 160));
        painter.drawEllipse(disc);
        painter.setPen(Qt::white);
        painter.drawText(disc, Qt::AlignCenter, sign == QStyle::SP_MessageBoxQuestion ? "?" : "i");
    }
}

} // namespace

desk_style::desk_style() : QProxyStyle("Windows") {}

int desk_style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* more) const {
    // a white shadow under grey letters makes them harder to read
    if (hint == SH_EtchDisabledText) return 0;
    return QProxyStyle::styleHint(hint, option, widget, more);
}

QIcon desk_style::standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const {
    if (sign != SP_MessageBoxCritical && sign != SP_MessageBoxWarning && sign != SP_MessageBoxQuestion &&
        sign != SP_MessageBoxInformation)
        return QProxyStyle::standardIcon(sign, option, widget);
    QIcon icon;
    // for screens of 100 to 300 %
    for (const int size : {32, 40, 48, 56, 64, 80, 96}) {
        QPixmap drawn(size, size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        painter.scale(size / 32.0, size / 32.0);
        draw_sign(painter, sign);
        painter.end();
        icon.addPixmap(drawn);
    }
    return icon;
}

} // namespace desk::qt
