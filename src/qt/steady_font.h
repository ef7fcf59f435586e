#pragma once

#include <QFont>
#include <QObject>

class QApplication;

namespace desk::qt {

/// Keeps one font for the whole program, also when the desktop brings its own after the start or changes it. Lives as
/// long as the application.
class steady_font : public QObject {
public:
    steady_font(QApplication& application, const QFont& font);

    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void restore();

    QFont font_;
    bool restoring_ = false;
};

} // namespace desk::qt
