#include "qt/waiting_words.h"

namespace desk::qt {

waiting_words::waiting_words(QWidget& frame) : QLabel(&frame) {
    setObjectName("waiting_words");
    setWordWrap(true);
    setAlignment(Qt::AlignBottom | Qt::AlignLeft);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void waiting_words::follow(const QString& words) {
    if (!words.isEmpty()) {
        const auto* const last = parentWidget()->findChild<QWidget*>("lab_hdcp");
        const auto* const refresh = parentWidget()->findChild<QWidget*>("cmd_refresh");
        const QRect above(last->geometry().bottomLeft() + QPoint(0, 1), refresh->geometry().topRight() - QPoint(0, 4));
        if (geometry() != above) setGeometry(above);
        if (text() != words) setText(words);
    }
    if (isVisibleTo(parentWidget()) == words.isEmpty()) setVisible(!words.isEmpty());
}

} // namespace desk::qt
