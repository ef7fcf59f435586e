#include "qt/decoration.h"

#include "qt/metrics.h"
#include "qt/scheme.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>

namespace desk::qt {

namespace {

class ring final : public decoration {
public:
    using decoration::decoration;

protected:
    void paintEvent(QPaintEvent* /*e*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double width = metric::focus_ring * plan_scale(this);
        painter.setPen(QPen(colors_of(palette()).accent, width));
        const double radius = metric::radius * plan_scale(this) + width / 2;
        painter.drawRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2), radius, radius);
    }
};

bool takes_text(const QWidget* w) {
    const auto* const line = qobject_cast<const QLineEdit*>(w);
    return line != nullptr && !line->isReadOnly();
}

} // namespace

decoration::decoration(QWidget* parent) : QFocusFrame(parent) {}

focus_ring::focus_ring(QApplication& application) : QObject(&application) {
    application.installEventFilter(this);
    connect(&application, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
        focused_ = now;
        follow();
    });
}

QWidget* focus_ring::marked() const { return ring_ != nullptr && ring_->isVisible() ? focused_.data() : nullptr; }

bool focus_ring::eventFilter(QObject* watched, QEvent* e) {
    switch (e->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
        if (by_keyboard_ != (e->type() == QEvent::KeyPress)) {
            by_keyboard_ = !by_keyboard_;
            follow();
        }
        break;
    case QEvent::FocusIn: {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(e)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason)
            by_keyboard_ = true;
        break;
    }
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::ParentChange:
    case QEvent::ReadOnlyChange:
        if (watched == focused_) follow();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, e);
}

void focus_ring::follow() {
    QWidget* const w = focused_;
    // a drop-down list marks its own row
    const bool drops_down = w != nullptr && w->window()->windowType() == Qt::Popup;
    if (w == nullptr || w->isWindow() || drops_down || !w->isVisible() || (!by_keyboard_ && !takes_text(w))) {
        if (ring_ != nullptr) ring_->hide();
        return;
    }
    const int width = scaled(metric::focus_ring, w);
    // parent it to the innermost widget that does not clip the ring
    QWidget* around = w->parentWidget();
    // leave a gap between the ring and a mark at the left edge
    const bool is_mark = qobject_cast<QCheckBox*>(w) != nullptr || qobject_cast<QRadioButton*>(w) != nullptr;
    QRect place = w->geometry().marginsAdded({is_mark ? 2 * width : width, width, width, width});
    while (!around->isWindow() && !around->rect().contains(place)) {
        place.translate(around->pos());
        around = around->parentWidget();
    }
    if (ring_ == nullptr) ring_ = new ring(around);
    if (ring_->parentWidget() != around) ring_->setParent(around);
    ring_->setGeometry(place);
    ring_->raise();
    ring_->show();
    ring_->update();
}

overlay_shadow::overlay_shadow(QWidget& overlay) : decoration(overlay.parentWidget()), overlay_(overlay) {
    overlay.installEventFilter(this);
    follow();
}

bool overlay_shadow::eventFilter(QObject* watched, QEvent* e) {
    switch (e->type()) {
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ZOrderChange:
        follow();
        break;
    default:
        break;
    }
    return QFocusFrame::eventFilter(watched, e);
}

void overlay_shadow::follow() {
    const bool shown = overlay_.isVisibleTo(overlay_.parentWidget());
    if (!shown) {
        hide();
        return;
    }
    const int out = scaled(metric::shadow + metric::shadow_drop, this);
    setGeometry(overlay_.geometry().marginsAdded({out, out, out, out}));
    stackUnder(&overlay_);
    show();
    update();
}

void overlay_shadow::paintEvent(QPaintEvent* /*e*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = plan_scale(this);
    const double drop = metric::shadow_drop * scale;
    const QRectF box = overlay_.geometry().translated(-pos());
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors_of(palette()).shadow);
    for (double step = metric::shadow; step > 0; step -= 1) {
        const double out = step * scale;
        const double radius = metric::radius * scale + out;
        painter.drawRoundedRect(box.adjusted(-out, drop - out, out, drop + out), radius, radius);
    }
}

} // namespace desk::qt
