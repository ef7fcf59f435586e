#pragma once

#include "qt/scheme.h"

#include <QObject>

#include <functional>
#include <memory>

namespace desk::qt {

/// Whether the desktop is light or dark, at start and while the program runs. Create it before the call of
/// `set_appearance`, which overrides Qt's palette.
class desktop_scheme {
public:
    explicit desktop_scheme(std::function<void(scheme)> changed);

    scheme now() const { return now_; }

private:
    scheme now_;
    std::unique_ptr<QObject> watch_;
};

/// What is known of the desktop's setting without waiting: on POSIX systems the palette that Qt has found.
scheme desktop_scheme_now();

/// Watches the desktop's setting for the life of the object. Calls `report` from the event loop, with the present
/// setting too if that takes a wait; never blocks.
std::unique_ptr<QObject> watch_desktop(std::function<void(scheme)> report);

} // namespace desk::qt
