#include "qt/desktop_scheme.h"

#include <QGuiApplication>
#include <QPalette>

#include <utility>

namespace desk::qt {

desktop_scheme::desktop_scheme(std::function<void(scheme)> changed)
    : now_(scheme_of(QGuiApplication::palette()))
    , watch_(watch_desktop([this, changed = std::move(changed)](scheme reported) {
        if (reported == now_) return;
        now_ = reported;
        changed(reported);
    })) {}

} // namespace desk::qt
