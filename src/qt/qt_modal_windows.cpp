#include "qt/qt_modal_windows.h"

#include <QEventLoop>

namespace desk::qt {

void qt_modal_windows::show(window& w) {
    gate_.throw_if_over();
    const busy_cursor::normal normal_cursor(gate_.cursor);
    w.visible = true;
    window_adapter adapter(w, gate_, parent);
    QEventLoop loop;
    QObject::connect(&adapter, &window_adapter::hidden, &loop, &QEventLoop::quit);
    open_.push_back(&adapter);
    if (gate_.follow) gate_.follow();
    adapter.focus_first();
    // the window stays until it is closed, whatever else ends the loop
    while (w.visible && !gate_.over())
        loop.exec();
    open_.pop_back();
    gate_.throw_if_over();
}

void qt_modal_windows::follow() {
    // a window closed here is removed when its own loop ends
    for (window_adapter* adapter : std::vector(open_))
        adapter->follow();
}

void qt_modal_windows::hide_all() {
    for (window_adapter* adapter : std::vector(open_))
        adapter->hide();
}

} // namespace desk::qt
