#pragma once

#include "controls/controls.h"
#include "qt/control_adapter.h"

namespace desk::qt {

std::unique_ptr<control_adapter> make_frame_adapter(frame& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_label_adapter(label& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_picture_adapter(picture& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_line_adapter(line& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_combo_box_adapter(combo_box& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_slider_adapter(slider& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
