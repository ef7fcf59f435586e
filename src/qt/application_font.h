#pragma once

#include <QFont>
#include <QObject>

class QApplication;

namespace desk::qt {

/// Keeps the program's font when the desktop sets or changes its own after the start. Lives as long as the
/// application.
class application_font : public QObject {
public:
    application_font(QApplication& application, const QFont& font);

    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void restore();

    QFont font_;
    bool restoring_ = false;
};

} // namespace desk::qt
