#pragma once

#include <QAbstractNativeEventFilter>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <map>
#include <set>

class QKeyEvent;
class QMouseEvent;

namespace desk::qt {

/// What the operator holds down while windows open and close. The control under the mouse is let go when a window, a
/// box or a menu opens. A box or window ignores keys and clicks until all that was down when it opened is up. A key
/// that repeats itself moves and types, and does nothing else. Needs the application.
class held_input : public QObject, public QAbstractNativeEventFilter {
public:
    held_input();

    bool eventFilter(QObject* watched, QEvent* e) override;
    /// Sees the X server's keys, since the toolkit drops the release of one over a window that a box blocks.
    bool nativeEventFilter(const QByteArray& system, void* message, qintptr* result) override;

private:
    using key_code = std::uint32_t;
    using x_time = std::uint32_t;

    static key_code code_of(const QKeyEvent& e);
    bool take_window_event(QEvent& e);
    bool take_key(QKeyEvent& e);
    void release(key_code key);
    void forget_silent_keys();
    bool take_mouse(const QMouseEvent& e);
    void window_opens(const QWidget& w);
    void let_go();
    bool waits();

    QElapsedTimer clock_;
    std::map<key_code, qint64> down_; // with the time of the last sign of life
    std::set<key_code> held_;         // of those, the ones that a window waits for
    Qt::MouseButtons held_buttons_;   // the mouse buttons that it waits for
    struct {
        key_code key = 0;
        x_time time = 0;
        bool was_held = false;
    } last_release_;                // as the X server reports it
    QPointer<QWidget> under_mouse_; // the one that a button was pressed over
    bool opened_since_press_ = false;
};

} // namespace desk::qt
