#pragma once

#include <QPoint>
#include <QString>

class QWidget;

namespace desk::qt {

/// The full text of what a widget shows at `at`, if it is elided there; else empty.
QString elided_text_at(QWidget& w, QPoint at);

} // namespace desk::qt
