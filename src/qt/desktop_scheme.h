#pragma once

#include "qt/scheme.h"

#include <QObject>

#include <functional>
#include <memory>

namespace desk::qt {

/// Whether the desktop is light or dark, when the program starts and while it runs. To be made before `set_look`, which
/// covers the colours that the desktop gives the toolkit.
class desktop_scheme {
public:
    explicit desktop_scheme(std::function<void(scheme)> changed);

    scheme now() const { return now_; }

private:
    scheme now_;
    std::unique_ptr<QObject> watch_;
};

/// Reads the desktop's own setting and follows it, as long as the object lives. `report` is called from the loop of
/// events with every answer; nothing waits for one.
std::unique_ptr<QObject> watch_desktop(std::function<void(scheme)> report);

} // namespace desk::qt
