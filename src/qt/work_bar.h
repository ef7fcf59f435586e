#pragma once

#include "link/exchange.h"

#include <QElapsedTimer>
#include <QProgressBar>
#include <QTimer>

namespace desk::qt {

/// A thin progress bar at the bottom of a window: determinate if the length of the work on the line is known,
/// indeterminate if not or during a retry. Work shorter than a tenth of a second does not show.
class work_bar final : public QProgressBar {
    Q_OBJECT

public:
    work_bar(QWidget& window, const exchange& link);

    /// Updates the bar. Called at every pump, and after every event.
    void follow();

    /// Why the desk waits; empty while it does not.
    const QString& reason() const { return reason_; }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void move_to_bottom();
    void show_on_top();

    QWidget& window_;
    const exchange& exchange_;
    QElapsedTimer busy_;          // since the work began
    QElapsedTimer retrying_;      // since a command was sent again
    QElapsedTimer indeterminate_; // since the indeterminate piece started
    QTimer hide_timer_;           // hides the bar a moment after the work ends
    bool measured_ = true;
    int drawn_step_ = 0;
    QString reason_;
};

} // namespace desk::qt
