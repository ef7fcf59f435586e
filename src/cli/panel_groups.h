#pragma once

#include "signal/panel.h"

#include <span>
#include <string>
#include <vector>

namespace desk::cli {

/// A row of switches of the panel.
struct panel_group {
    const char* name;
    std::vector<const char*> values; ///< in the order of the buttons
    std::span<button> (*buttons)(panel& p);
};

/// The rows in the panel's order.
const std::vector<panel_group>& panel_groups();

} // namespace desk::cli
