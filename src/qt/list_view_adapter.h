#pragma once

#include "controls/list_view.h"
#include "controls/tree_view.h"
#include "qt/control_adapter.h"

namespace desk::qt {

std::unique_ptr<control_adapter> make_list_view_adapter(list_view& model, QWidget* parent, event_gate& gate);
std::unique_ptr<control_adapter> make_tree_view_adapter(tree_view& model, QWidget* parent, event_gate& gate);

} // namespace desk::qt
