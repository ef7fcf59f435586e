#pragma once

#include "controls/list_view.h"
#include "controls/tree_view.h"
#include "qt/control_face.h"

namespace desk::qt {

std::unique_ptr<control_face> make_list_view_face(list_view& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_face> make_tree_view_face(tree_view& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
