#pragma once

#include "controls/control.h"

#include <QString>

namespace desk::qt {

/// The accessible name of a control that its caption and position do not explain, such as "Horizontal total in
/// pixels". Empty if the caption is enough.
QString accessible_name(const control& c);

} // namespace desk::qt
