#pragma once

#include <QLabel>

namespace desk::qt {

/// Says in the status frame why the desk waits, in the free place above Refresh.
class retry_label final : public QLabel {
    Q_OBJECT

public:
    /// `frame` is the widget of the status frame.
    explicit retry_label(QWidget& frame);

    void follow(const QString& words);
};

} // namespace desk::qt
