#pragma once

#include "controls/controls.h"
#include "qt/control_adapter.h"

namespace desk::qt {

std::unique_ptr<control_adapter> make_button_adapter(button& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_check_box_adapter(check_box& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_option_button_adapter(option_button& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
