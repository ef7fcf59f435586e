#pragma once

#include "controls/window.h"

namespace desk {

/// Windows that stand above the others until they are closed.
class modal_windows {
public:
    virtual ~modal_windows() = default;

    /// Shows a window and returns when it is no longer visible. Meanwhile the operator reaches no window below it;
    /// events go on. Throws program_over when the program has ended meanwhile.
    virtual void show(window& w) = 0;
};

} // namespace desk
