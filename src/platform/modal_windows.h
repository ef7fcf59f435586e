#pragma once

#include "controls/window.h"

namespace desk {

/// Windows that block the others until they are closed.
class modal_windows {
public:
    virtual ~modal_windows() = default;

    /// Shows a window and returns when it is no longer visible. Meanwhile the windows below it are blocked, and
    /// events run. Throws program_over if the program has ended meanwhile.
    virtual void show(window& w) = 0;
};

} // namespace desk
