#pragma once

#include "controls/controls.h"
#include "qt/control_adapter.h"

namespace desk::qt {

/// Creates a single-line box, or a multi-line one with the fixed-pitch font on a grid of 8 x 16 pixels.
std::unique_ptr<control_adapter> make_text_box_adapter(text_box& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
