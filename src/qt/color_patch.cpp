#include "qt/color_patch.h"

#include "qt/metrics.h"
#include "qt/scheme.h"
#include "signal/shown_color.h"

#include <QPainter>

namespace desk::qt {

namespace {

// in pixels of the plan
constexpr int distance = 20;
constexpr int patch_height = 56;

/// The widget of a control, where it lies now.
QRect place_of(const QWidget& frame, const control& c) {
    const auto* const w = frame.findChild<QWidget*>(QString::fromStdString(c.name) + "_" + QString::number(c.index),
                                                    Qt::FindDirectChildrenOnly);
    return w == nullptr ? QRect() : w->geometry();
}

} // namespace

color_patch::color_patch(QWidget& frame, const desk_frame& desk, const color_settings& colors)
    : QWidget(&frame), desk_frame_(desk), colors_(colors) {
    setObjectName("color_patch");
    hide();
}

void color_patch::follow() {
    const slider& last = desk_frame_.hsr_color_setting.back();
    const bool shows = last.shown() && last.enabled && colors_.color_mode != 0;
    if (shows) {
        const double scale = plan_scale(this);
        const QRect bar = place_of(*parentWidget(), last);
        const QRect box = place_of(*parentWidget(), desk_frame_.txt_color_setting.back());
        const QRect place(QPoint(bar.left(), bar.bottom() + qRound(distance * scale)),
                          QSize(box.right() - bar.left() + 1, qRound(patch_height * scale)));
        if (geometry() != place) setGeometry(place);
        const rgb_color now = shown_color(colors_.color_mode, colors_.channels);
        const QColor shown(now[0], now[1], now[2]);
        if (color_ != shown || color_mode_ != colors_.color_mode) {
            color_ = shown;
            color_mode_ = colors_.color_mode;
            tell();
            update();
        }
    }
    if (isVisibleTo(parentWidget()) != shows) setVisible(shows);
}

void color_patch::tell() {
    const QString name = color_.name().toUpper();
    setAccessibleName("Chosen color " + name);
    setToolTip("<qt><nobr>The chosen color: " + name +
               (color_mode_ == 1 ? "" : ", from full-range Cr, Y and Cb by the BT.601 matrix") + "</nobr></qt>");
}

void color_patch::paintEvent(QPaintEvent* /*e*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = hairline(this);
    const double radius = metric::radius * plan_scale(this);
    painter.setPen(QPen(colors_of(palette()).strong_border, line));
    painter.setBrush(color_);
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2), radius, radius);
}

} // namespace desk::qt
