#include "qt/window_drag.h"

namespace desk::qt {

bool is_window_dragged() { return false; }

} // namespace desk::qt
