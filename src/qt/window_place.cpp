#include "qt/window_place.h"

#include "qt/plan_fit.h"
#include "qt/plan_scale.h"
#include "qt/window_drag.h"

#include <QEvent>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace desk::qt {

namespace {

/// A typical window frame.
constexpr QMargins usual_frame(2, 30, 2, 2);
constexpr std::chrono::milliseconds look_for_end_of_drag(50);
constexpr double largest_scale = std::numeric_limits<double>::infinity();

} // namespace

window_place::window_place(QWidget& window, QSize plan, const QWidget* above)
    : window_(window), plan_(plan), usual_scale_(plan_scale(above)), assumed_frame_(usual_frame) {
    if (above != nullptr) {
        window_.setScreen(above->screen());
        if (above->windowHandle() != nullptr) assumed_frame_ = above->windowHandle()->frameMargins();
    }
    first_size_ = size_within(room_on_screen(), usual_scale_);
    window_.resize(first_size_);
    if (above != nullptr) {
        QRect frame(QPoint(), first_size_.grownBy(assumed_frame_));
        frame.moveCenter(above->frameGeometry().center());
        window_.move(moved_into(window_.screen()->availableGeometry(), frame).topLeft());
    }
    window_.installEventFilter(this);
}

QMargins window_place::frame_margins() const {
    if (!has_been_shown_ || window_.windowHandle() == nullptr) return assumed_frame_;
    const QMargins frame = window_.windowHandle()->frameMargins();
    return frame.isNull() ? assumed_frame_ : frame;
}

QSize window_place::size_within(QSize room, double largest) const {
    const double ratio = window_.screen()->devicePixelRatio();
    // a size can lose one pixel on the way to screen pixels and back
    const int lost = ratio > std::floor(ratio) ? 1 : 0;
    const QMargins spare(0, 0, lost, lost);
    return plan_pixels(plan_, first_scale(plan_, room, spare, ratio, largest)).grownBy(spare).boundedTo(room);
}

QSize window_place::room_on_screen() const {
    return window_.screen()->availableGeometry().size().shrunkBy(frame_margins());
}

bool window_place::eventFilter(QObject* watched, QEvent* e) {
    if (watched == &window_ && e->type() == QEvent::Show && !screen_changes_) on_first_show();
    if (watched == window_.windowHandle() && e->type() == QEvent::Expose && window_.windowHandle()->isExposed() &&
        !has_been_shown_) {
        has_been_shown_ = true;
        // not while the window is being painted
        QMetaObject::invokeMethod(this, &window_place::correct_first_size, Qt::QueuedConnection);
    }
    return false;
}

void window_place::on_first_show() {
    window_.windowHandle()->installEventFilter(this);
    connect(window_.windowHandle(), &QWindow::screenChanged, this, [this] {
        watch_screen();
        // on Windows the window gets its size for the new screen after this
        QMetaObject::invokeMethod(this, &window_place::fit_on_new_screen, Qt::QueuedConnection);
    });
    watch_screen();
}

void window_place::watch_screen() {
    disconnect(screen_changes_);
    screen_changes_ = connect(window_.screen(), &QScreen::availableGeometryChanged, this, &window_place::fit_on_screen);
}

void window_place::correct_first_size() {
    // a window manager or the operator was quicker
    const QSize changed = window_.size() - first_size_;
    const bool is_first = std::abs(changed.width()) <= 1 && std::abs(changed.height()) <= 1;
    if (window_.isMaximized() || window_.isFullScreen() || !is_first) return;
    const QSize size = size_within(room_on_screen(), usual_scale_);
    put_in_sight(size != first_size_ ? size : window_.size());
}

void window_place::fit_on_new_screen() {
    if (is_window_dragged())
        QTimer::singleShot(look_for_end_of_drag, this, &window_place::fit_on_new_screen);
    else
        fit_on_screen();
}

void window_place::fit_on_screen() {
    if (window_.isMaximized() || window_.isFullScreen()) return;
    const QSize room = window_.size().boundedTo(room_on_screen());
    put_in_sight(room != window_.size() ? size_within(room_on_screen(), largest_scale) : window_.size());
}

void window_place::put_in_sight(QSize size) {
    const QRect now = window_.geometry();
    const QRect frame = window_.frameGeometry();
    const QMargins around(now.left() - frame.left(), now.top() - frame.top(), frame.right() - now.right(),
                          frame.bottom() - now.bottom());
    const QRect moved = moved_into(window_.screen()->availableGeometry(), QRect(frame.topLeft(), size.grownBy(around)));
    if (moved.topLeft() == frame.topLeft()) {
        if (size != now.size()) window_.resize(size);
    } else if (size == now.size()) {
        window_.move(moved.topLeft());
    } else {
        // at once: between two steps most of the window could be on another screen, which it would then belong to
        window_.setGeometry(moved.marginsRemoved(around));
    }
}

} // namespace desk::qt
