#pragma once

#include "controls/control.h"

#include <QString>

namespace desk::qt {

/// What a control does, in one line for its tooltip: "Sends the selected timing to the generator". Empty for a control
/// that only shows something that its title says.
QString help_line(const control& c);

} // namespace desk::qt
