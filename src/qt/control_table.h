#pragma once

#include "controls/window.h"

#include <map>
#include <string>

namespace desk::qt {

/// Looks up a control by name: with its window ("frm_diag.cmd_ok"), with its index ("opt_unused(0)"), then alone.
/// Returns nullptr if there is no entry.
template <class Entry>
const Entry* entry_of(const control& c, const std::map<std::string, Entry>& table) {
    for (const std::string& name : {c.owner->name + "." + c.name, c.full_name(), c.name})
        if (const auto found = table.find(name); found != table.end()) return &found->second;
    return nullptr;
}

} // namespace desk::qt
