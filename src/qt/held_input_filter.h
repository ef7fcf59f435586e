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

/// Keys and mouse buttons that are down while windows open and close. When a window, box or menu opens, the control
/// under the mouse is released. The new window ignores input until everything that was down has been released.
/// Auto-repeat only moves and types. Needs the application.
class held_input_filter : public QObject, public QAbstractNativeEventFilter {
public:
    held_input_filter();

    bool eventFilter(QObject* watched, QEvent* e) override;
    /// Sees the X server's key events, since Qt drops a release over a window blocked by a box.
    bool nativeEventFilter(const QByteArray& system, void* message, qintptr* result) override;

private:
    using key_code = std::uint32_t;
    using x_time = std::uint32_t;

    static key_code code_of(const QKeyEvent& e);
    bool filter_window_event(QEvent& e);
    bool filter_key(QKeyEvent& e);
    void release(key_code key);
    void forget_silent_keys();
    bool filter_mouse(const QMouseEvent& e);
    void window_opens(const QWidget& w);
    void release_pressed();
    bool waits();

    QElapsedTimer clock_;
    std::map<key_code, qint64> down_; // with the time of the latest event
    std::set<key_code> held_;         // the keys among them that a window waits for
    Qt::MouseButtons held_buttons_;   // mouse buttons that a window waits for
    struct {
        key_code key = 0;
        x_time time = 0;
        bool was_held = false;
    } last_release_;                // as reported by the X server
    QPointer<QWidget> under_mouse_; // where a mouse button was pressed
    bool opened_since_press_ = false;
};

} // namespace desk::qt
