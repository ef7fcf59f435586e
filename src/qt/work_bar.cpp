#include "qt/work_bar.h"

#include "qt/plan_scale.h"

#include <QEvent>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <chrono>

namespace desk::qt {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds show_delay(100);
/// How long the finished bar stays visible.
constexpr milliseconds linger(250);
constexpr int whole = 10'000;
constexpr int bar_height = 3;
constexpr milliseconds step_time(40);
constexpr int steps_across = 40;

} // namespace

work_bar::work_bar(QWidget& window, const exchange& link) : QProgressBar(&window), window_(window), exchange_(link) {
    setObjectName("work_bar");
    setAccessibleName("Progress");
    setTextVisible(false);
    setRange(0, whole);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide_timer_.setSingleShot(true);
    hide_timer_.setInterval(linger);
    connect(&hide_timer_, &QTimer::timeout, this, &QWidget::hide);
    hide();
    window.installEventFilter(this);
}

void work_bar::follow() {
    if (exchange_.tries < 2)
        retrying_.invalidate();
    else if (!retrying_.isValid())
        retrying_.start();
    const bool retrying = retrying_.isValid() && milliseconds(retrying_.elapsed()) >= show_delay;
    const bool busy = exchange_.progress.at_work() || retrying;
    if (!busy) {
        if (busy_.isValid() && isVisible()) hide_timer_.start();
        busy_.invalidate();
        reason_.clear();
        return;
    }
    if (!busy_.isValid()) busy_.start();
    reason_ = retrying ? "No answer yet: trying again" : "";
    // shorter work shows only if the bar is visible already
    if (milliseconds(busy_.elapsed()) < show_delay && !retrying && !isVisible()) return;
    hide_timer_.stop();
    measured_ = !retrying && !exchange_.progress.has_no_measure();
    if (measured_) {
        indeterminate_.invalidate();
        setValue(static_cast<int>(exchange_.progress.fraction() * whole));
    } else {
        if (!indeterminate_.isValid()) indeterminate_.start();
        const int step = static_cast<int>(milliseconds(indeterminate_.elapsed()) / step_time);
        if (step != drawn_step_) update();
        drawn_step_ = step;
    }
    if (accessibleDescription() != reason_) setAccessibleDescription(reason_);
    show_on_top();
}

void work_bar::show_on_top() {
    move_to_bottom();
    if (isVisible()) return;
    raise();
    show();
}

void work_bar::move_to_bottom() {
    const int height = std::max(bar_height, qRound(bar_height * plan_scale(&window_)));
    const QRect bottom(0, window_.height() - height, window_.width(), height);
    if (geometry() != bottom) setGeometry(bottom);
}

bool work_bar::eventFilter(QObject* watched, QEvent* e) {
    if (e->type() == QEvent::Resize && isVisible()) move_to_bottom();
    return QProgressBar::eventFilter(watched, e);
}

void work_bar::paintEvent(QPaintEvent* /*e*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    QRect done = rect();
    if (measured_) {
        done.setWidth(static_cast<int>(static_cast<double>(width()) * value() / whole));
    } else {
        const int piece = width() / 4;
        done = QRect((width() + piece) * (drawn_step_ % steps_across) / steps_across - piece, 0, piece, height());
    }
    painter.fillRect(done, palette().color(QPalette::Highlight));
}

} // namespace desk::qt
