#include "qt/desktop_scheme.h"

#include <utility>

namespace desk::qt {

desktop_scheme::desktop_scheme(std::function<void(scheme)> changed)
    : now_(desktop_scheme_now()), watch_(watch_desktop([this, changed = std::move(changed)](scheme reported) {
        if (reported == now_) return;
        now_ = reported;
        changed(reported);
    })) {}

} // namespace desk::qt
