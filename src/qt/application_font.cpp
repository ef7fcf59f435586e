#include "qt/application_font.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace desk::qt {

application_font::application_font(QApplication& application, const QFont& font) : QObject(&application), font_(font) {
    restore();
    application.installEventFilter(this);
}

bool application_font::eventFilter(QObject* watched, QEvent* e) {
    if (restoring_) return false;
    // a desktop can also set fonts for single widget classes; then only those widgets, or all at once, get the event
    const auto* const w = watched->isWidgetType() ? static_cast<QWidget*>(watched) : nullptr;
    if (e->type() == QEvent::ThemeChange || (e->type() == QEvent::ApplicationFontChange &&
                                             (w != nullptr ? QApplication::font(w) : QApplication::font()) != font_))
        restore();
    return false;
}

void application_font::restore() {
    restoring_ = true;
    QApplication::setFont(font_);
    restoring_ = false;
}

} // namespace desk::qt
