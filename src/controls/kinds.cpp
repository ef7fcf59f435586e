#include "controls/kinds.h"

namespace desk {

std::string_view kind_name(const control& c) {
    return visit(c, overloaded{
                        [](const window&) { return "window"; },
                        [](const frame&) { return "frame"; },
                        [](const button&) { return "button"; },
                        [](const label&) { return "label"; },
                        [](const text_box&) { return "text_box"; },
                        [](const combo_box&) { return "combo_box"; },
                        [](const check_box&) { return "check_box"; },
                        [](const option_button&) { return "option_button"; },
                        [](const slider&) { return "slider"; },
                        [](const picture&) { return "picture"; },
                        [](const line&) { return "line"; },
                        [](const list_view&) { return "list_view"; },
                        [](const tree_view&) { return "tree_view"; },
                        [](const timer&) { return "timer"; },
                    });
}

} // namespace desk
