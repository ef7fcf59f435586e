#pragma once

#include "qt/look.h"

#include <QEvent>

namespace desk::qt {

/// A list, a tree or a page of text that shows on its frame that it has the focus.
template <class Area>
class focus_frame : public Area {
public:
    using Area::Area;

protected:
    bool event(QEvent* e) override {
        const bool taken = Area::event(e);
        if (e->type() == QEvent::Paint && this->hasFocus()) draw_focus(*this);
        // the frame is drawn apart from what it holds
        if (e->type() == QEvent::FocusIn || e->type() == QEvent::FocusOut) this->update();
        return taken;
    }
};

} // namespace desk::qt
