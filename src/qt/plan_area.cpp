#include "qt/plan_area.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

namespace desk::qt {

plan_area::plan_area(QWidget* window) : QScrollArea(window) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setAlignment(Qt::AlignCenter);
    setWidget(new QWidget);
}

bool plan_area::scrolls() const { return horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0; }

void plan_area::keyPressEvent(QKeyEvent* e) {
    if (scrolls())
        QScrollArea::keyPressEvent(e);
    else
        e->ignore();
}

void plan_area::ensure_visible(QWidget& control) {
    // what is clicked stays under the pointer
    if (scrolls() && QApplication::mouseButtons() == Qt::NoButton) ensureWidgetVisible(&control);
}

} // namespace desk::qt
