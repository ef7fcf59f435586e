#include "qt/window_drag.h"

#include "runtime/windows_api.h"

namespace desk::qt {

bool is_window_dragged() {
    GUITHREADINFO now{};
    now.cbSize = sizeof now;
    return GetGUIThreadInfo(GetCurrentThreadId(), &now) && (now.flags & GUI_INMOVESIZE) != 0;
}

} // namespace desk::qt
