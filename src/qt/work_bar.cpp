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

constexpr milliseconds shown_after(100);
/// The end of the work is seen too.
constexpr milliseconds last_sight(250);
constexpr int whole = 10'000;
constexpr int bar_height = 3;
constexpr milliseconds step_time(40);
/// The wandering piece crosses the window in this many steps.
constexpr int steps_across = 40;

} // namespace

work_bar::work_bar(QWidget& window, const exchange& link) : QProgressBar(&window), window_(window), exchange_(link) {
    setObjectName("work_bar");
    setAccessibleName("Progress");
    setTextVisible(false);
    setRange(0, whole);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    goes_.setSingleShot(true);
    goes_.setInterval(last_sight);
    connect(&goes_, &QTimer::timeout, this, &QWidget::hide);
    hide();
    window.installEventFilter(this);
}

void work_bar::follow() {
    if (exchange_.tries < 2)
        again_.invalidate();
    else if (!again_.isValid())
        again_.start();
    const bool tries_again = again_.isValid() && milliseconds(again_.elapsed()) >= shown_after;
    const bool busy = exchange_.progress.at_work() || tries_again;
    if (!busy) {
        if (busy_.isValid() && isVisible()) goes_.start();
        busy_.invalidate();
        words_.clear();
        return;
    }
    if (!busy_.isValid()) busy_.start();
    words_ = tries_again ? "No answer yet: trying again" : "";
    // less shows only if the bar is there already
    if (milliseconds(busy_.elapsed()) < shown_after && !tries_again && !isVisible()) return;
    goes_.stop();
    measured_ = !tries_again && !exchange_.progress.has_no_measure();
    if (measured_) {
        wanders_.invalidate();
        setValue(static_cast<int>(exchange_.progress.fraction() * whole));
    } else {
        if (!wanders_.isValid()) wanders_.start();
        const int step = static_cast<int>(milliseconds(wanders_.elapsed()) / step_time);
        if (step != drawn_step_) update();
        drawn_step_ = step;
    }
    if (accessibleDescription() != words_) setAccessibleDescription(words_);
    come_up();
}

void work_bar::come_up() {
    lie_at_foot();
    if (isVisible()) return;
    raise();
    show();
}

void work_bar::lie_at_foot() {
    const int height = std::max(bar_height, qRound(bar_height * plan_scale(&window_)));
    const QRect foot(0, window_.height() - height, window_.width(), height);
    if (geometry() != foot) setGeometry(foot);
}

bool work_bar::eventFilter(QObject* watched, QEvent* e) {
    if (e->type() == QEvent::Resize && isVisible()) lie_at_foot();
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
