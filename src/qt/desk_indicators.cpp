#include "qt/desk_indicators.h"

#include <QString>

namespace desk::qt {

namespace {

/// Finds a widget of the window by its control's name.
template <class Widget = QWidget>
Widget& widget_in(QWidget& window, const char* name) {
    return *window.findChild<Widget*>(QString::fromLatin1(name));
}

} // namespace

desk_indicators::desk_indicators(QWidget& window, const frm_main& desk)
    : exchange_(desk.exchange)
    , bar_(*new work_bar(window, desk.exchange))
    , retry_label_(*new retry_label(widget_in(window, "fra_status")))
    , patch_(*new color_patch(widget_in(window, "fra_desk"), desk.desk_frame, desk.color_settings))
    , texts_(widget_in<text_page>(window, "txt_write"), widget_in<text_page>(window, "txt_read"), desk.workbench,
             desk.result_frame.differing) {}

void desk_indicators::follow() {
    bar_.follow();
    retry_label_.follow(bar_.reason());
    patch_.follow();
    texts_.follow();
}

void desk_indicators::follow_in(QWidget& modal_window) {
    auto* bar = modal_window.findChild<work_bar*>({}, Qt::FindDirectChildrenOnly);
    if (bar == nullptr) bar = new work_bar(modal_window, exchange_); // owned by its window
    bar->follow();
}

} // namespace desk::qt
