#pragma once

#include "controls/control.h"

#include <QString>

namespace desk::qt {

/// What a control is, in plain words, for those who do not see where it stands: "Horizontal total in pixels". Empty
/// where its caption says all of it.
QString plain_name(const control& c);

} // namespace desk::qt
