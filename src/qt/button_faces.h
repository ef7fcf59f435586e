#pragma once

#include "controls/controls.h"
#include "qt/control_face.h"

namespace desk::qt {

std::unique_ptr<control_face> make_button_face(button& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_check_box_face(check_box& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_option_button_face(option_button& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
