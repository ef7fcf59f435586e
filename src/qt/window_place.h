#pragma once

#include <QMargins>
#include <QObject>
#include <QSize>

class QScreen;
class QWidget;

namespace desk::qt {

/// The size and place with which a window opens. Nothing is remembered between runs.
class window_place final : public QObject {
    Q_OBJECT

public:
    /// `plan` in twips. A window above another one opens in its centre, at its scale if that fits.
    window_place(QWidget& window, QSize plan, const QWidget* above);

    /// The scale of the window below; 1 for the main window.
    double usual_scale() const { return usual_scale_; }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    /// The margins are known only after the window has appeared.
    QMargins frame_margins() const;
    QSize room_on_screen() const;
    /// The size of the plan at the largest scale that fits.
    QSize size_within(QSize room, double largest) const;
    void on_first_show();
    void correct_first_size();
    void watch_screen();
    /// Not while the operator still drags the window there.
    void fit_on_new_screen();
    /// Called after the screen has become smaller.
    void fit_on_screen();
    void put_in_sight(QSize size);

    QWidget& window_;
    QSize plan_;
    double usual_scale_;
    QMargins assumed_frame_;
    QSize first_size_;
    bool has_been_shown_ = false;
    QMetaObject::Connection screen_changes_;
};

} // namespace desk::qt
