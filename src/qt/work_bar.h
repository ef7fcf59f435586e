#pragma once

#include "link/exchange.h"

#include <QElapsedTimer>
#include <QProgressBar>
#include <QTimer>

namespace desk::qt {

/// A thin bar at the foot of a window: how far the work on the line is, and a wandering piece while a command is tried
/// again or nobody knows how long the work takes. Work of less than a tenth of a second doesn't show.
class work_bar final : public QProgressBar {
    Q_OBJECT

public:
    work_bar(QWidget& window, const exchange& link);

    /// Brings the bar up to date. Called at every pump, and after every event.
    void follow();

    /// Why it waits, in words; empty while it does not.
    const QString& words() const { return words_; }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void lie_at_foot();
    void come_up();

    QWidget& window_;
    const exchange& exchange_;
    QElapsedTimer busy_;    // since the work began
    QElapsedTimer again_;   // since a command was sent again
    QElapsedTimer wanders_; // since the piece began to wander
    QTimer goes_;           // a moment after the work's end
    bool measured_ = true;
    int drawn_step_ = 0;
    QString words_;
};

} // namespace desk::qt
