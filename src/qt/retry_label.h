#pragma once

#include <QLabel>

namespace desk::qt {

/// Says in the status frame, above Refresh, why the desk waits.
class retry_label final : public QLabel {
    Q_OBJECT

public:
    explicit retry_label(QWidget& frame);

    void follow(const QString& reason);
};

} // namespace desk::qt
