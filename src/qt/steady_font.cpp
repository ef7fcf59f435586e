#include "qt/steady_font.h"

#include <QApplication>
#include <QEvent>

namespace desk::qt {

steady_font::steady_font(QApplication& application, const QFont& font) : QObject(&application), font_(font) {
    restore();
    application.installEventFilter(this);
}

bool steady_font::eventFilter(QObject* watched, QEvent* e) {
    // a desktop also sets fonts for single kinds of widget, and does not always say so
    const bool font_changes = e->type() == QEvent::ApplicationFontChange && watched == parent();
    if (!restoring_ && (font_changes || e->type() == QEvent::ThemeChange)) restore();
    return false;
}

void steady_font::restore() {
    restoring_ = true;
    QApplication::setFont(font_);
    restoring_ = false;
}

} // namespace desk::qt
