#include "qt/retry_label.h"

namespace desk::qt {

retry_label::retry_label(QWidget& frame) : QLabel(&frame) {
    setObjectName("retry_label");
    setWordWrap(true);
    setAlignment(Qt::AlignBottom | Qt::AlignLeft);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void retry_label::follow(const QString& reason) {
    if (!reason.isEmpty()) {
        const auto* const last = parentWidget()->findChild<QWidget*>("lab_hdcp");
        const auto* const refresh = parentWidget()->findChild<QWidget*>("cmd_refresh");
        const QRect above(last->geometry().bottomLeft() + QPoint(0, 1), refresh->geometry().topRight() - QPoint(0, 4));
        if (geometry() != above) setGeometry(above);
        if (text() != reason) setText(reason);
    }
    if (isVisibleTo(parentWidget()) == reason.isEmpty()) setVisible(!reason.isEmpty());
}

} // namespace desk::qt
