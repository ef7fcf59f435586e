#pragma once

namespace desk::qt {

/// Lets labels and lines be told to screen readers as what they are, where the toolkit does not know it.
void make_accessible();

} // namespace desk::qt
