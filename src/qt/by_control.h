#pragma once

#include "controls/window.h"

#include <map>
#include <string>

namespace desk::qt {

/// The entry of a control in a table: by its name with the window's name before it ("frm_diag.cmd_ok"), with its place
/// in a control array ("opt_unused(0)"), or alone; none: nullptr.
template <class Entry>
const Entry* entry_of(const control& c, const std::map<std::string, Entry>& table) {
    for (const std::string& name : {c.owner->name + "." + c.name, c.full_name(), c.name})
        if (const auto found = table.find(name); found != table.end()) return &found->second;
    return nullptr;
}

} // namespace desk::qt
