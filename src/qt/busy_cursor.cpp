#include "qt/busy_cursor.h"

#include <QCursor>
#include <QGuiApplication>

#include <utility>

namespace desk::qt {

void busy_cursor::wait() {
    if (busy_ == 0) busy_ = depth_;
    show(busy_ != 0);
}

void busy_cursor::event_ends() {
    if (busy_ == depth_) {
        busy_ = 0;
        show(false);
    }
    --depth_;
}

void busy_cursor::show(bool busy) {
    if (shown_ == busy) return;
    shown_ = busy;
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

busy_cursor::normal::normal(busy_cursor& cursor) : cursor_(cursor), busy_before_(std::exchange(cursor.busy_, 0)) {
    cursor_.show(false);
}

busy_cursor::normal::~normal() {
    cursor_.busy_ = busy_before_;
    cursor_.show(busy_before_ != 0);
}

} // namespace desk::qt
