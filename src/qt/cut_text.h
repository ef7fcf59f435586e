#pragma once

#include <QPoint>
#include <QString>

class QWidget;

namespace desk::qt {

/// The whole text of what a widget shows at one of its points, where there is not room for all of it; else empty.
QString cut_text_at(QWidget& w, QPoint at);

} // namespace desk::qt
