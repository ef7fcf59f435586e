#include "qt/drawing.h"
#include "qt/metrics.h"

#include <QIcon>
#include <QPixmap>
#include <QPolygonF>

namespace desk::qt {

namespace {

/// An icon in a square of 32 units; icons differ in shape, not only in colour.
void draw_sign(QPainter& painter, QStyle::StandardPixmap sign) {
    painter.setRenderHint(QPainter::Antialiasing);
    QFont letter("Liberation Sans");
    letter.setPixelSize(20);
    letter.setBold(true);
    painter.setFont(letter);
    painter.setPen(Qt::NoPen);
    const QRectF disc(2, 2, 28, 28);
    switch (sign) {
    case QStyle::SP_MessageBoxCritical:
        painter.setBrush(QColor(0xC62828));
        painter.drawPolygon(QPolygonF({{10, 2}, {22, 2}, {30, 10}, {30, 22}, {22, 30}, {10, 30}, {2, 22}, {2, 10}}));
        painter.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(11.5, 11.5), QPointF(20.5, 20.5));
        painter.drawLine(QPointF(20.5, 11.5), QPointF(11.5, 20.5));
        break;
    case QStyle::SP_MessageBoxWarning:
        painter.setBrush(QColor(0xF2B705));
        painter.setPen(QPen(QColor(0xF2B705), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolygon(QPolygonF({{16, 4}, {29, 27}, {3, 27}}));
        painter.setPen(on_lamp());
        painter.drawText(QRectF(2, 6, 28, 23), Qt::AlignCenter, "!");
        break;
    default:
        painter.setBrush(QColor(0x1F5FBF));
        painter.drawEllipse(disc);
        painter.setPen(Qt::white);
        painter.drawText(disc, Qt::AlignCenter, sign == QStyle::SP_MessageBoxQuestion ? "?" : "i");
    }
}

} // namespace

QIcon box_sign(QStyle::StandardPixmap sign) {
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
