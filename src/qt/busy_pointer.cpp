#include "qt/busy_pointer.h"

#include <QCursor>
#include <QGuiApplication>

#include <utility>

namespace desk::qt {

void busy_pointer::wait() {
    if (busy_ == 0) busy_ = depth_;
    show(busy_ != 0);
}

void busy_pointer::event_ends() {
    if (busy_ == depth_) {
        busy_ = 0;
        show(false);
    }
    --depth_;
}

void busy_pointer::show(bool busy) {
    if (shown_ == busy) return;
    shown_ = busy;
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

busy_pointer::usual::usual(busy_pointer& pointer) : pointer_(pointer), busy_before_(std::exchange(pointer.busy_, 0)) {
    pointer_.show(false);
}

busy_pointer::usual::~usual() {
    pointer_.busy_ = busy_before_;
    pointer_.show(busy_before_ != 0);
}

} // namespace desk::qt
