#pragma once

namespace desk::qt {

/// Whether the operator is moving or resizing a window by its frame. Always false where only the window manager knows.
bool is_window_dragged();

} // namespace desk::qt
