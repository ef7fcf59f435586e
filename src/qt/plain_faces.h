#pragma once

#include "controls/controls.h"
#include "qt/control_face.h"

namespace desk::qt {

std::unique_ptr<control_face> make_frame_face(frame& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_label_face(label& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_picture_face(picture& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_line_face(line& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_combo_box_face(combo_box& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_slider_face(slider& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
