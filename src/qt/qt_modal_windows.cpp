#include "qt/qt_modal_windows.h"

#include <QEventLoop>

namespace desk::qt {

void qt_modal_windows::show(window& w) {
    gate_.throw_if_over();
    const busy_pointer::usual usual_pointer(gate_.pointer);
    w.visible = true;
    window_face face(w, gate_, parent);
    QEventLoop loop;
    QObject::connect(&face, &window_face::hidden, &loop, &QEventLoop::quit);
    open_.push_back(&face);
    if (gate_.follow) gate_.follow();
    face.focus_first();
    // whatever else ends the loop, the window stands until it is closed
    while (w.visible && !gate_.over())
        loop.exec();
    open_.pop_back();
    gate_.throw_if_over();
}

void qt_modal_windows::follow() {
    // one that is closed by this leaves its place when its own loop has ended
    for (window_face* face : std::vector(open_))
        face->follow();
}

void qt_modal_windows::hide_all() {
    for (window_face* face : std::vector(open_))
        face->hide();
}

} // namespace desk::qt
