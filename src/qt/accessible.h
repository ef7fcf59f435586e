#pragma once

namespace desk::qt {

/// Gives screen readers the roles of labels and lines that Qt does not know.
void make_accessible();

} // namespace desk::qt
