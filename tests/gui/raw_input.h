#pragma once

#include "ui_driver.h"

#include <QPoint>
#include <QString>

namespace desk::gui {

/// Simulates held keys and mouse buttons. Keys go to the focused window, as from the window system; while a box is
/// open, that is the box.
class raw_input {
public:
    explicit raw_input(QWidget& w) : window_(w) {}

    static void press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);
    /// Sends auto-repeat of a key that stays down.
    static void repeat(Qt::Key key, int times = 1, Qt::KeyboardModifiers held = Qt::NoModifier);
    static void release(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);
    static void tap(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);

    void press_mouse(const QString& name, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers held = Qt::NoModifier) const;
    void move_mouse(const QString& name, QPoint at) const;
    void release_mouse(const QString& name, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                       Qt::KeyboardModifiers held = Qt::NoModifier) const;
    void click_mouse(const QString& name, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers held = Qt::NoModifier) const;
    /// Turns the wheel over the middle of a control; negative is towards the operator.
    void turn_wheel(const QString& name, int notches, Qt::KeyboardModifiers held = Qt::NoModifier) const;

    /// The name of the focused widget, or empty.
    static std::string focused();

private:
    QPoint in_window(const QString& name, QPoint at) const;

    QWidget& window_;
};

} // namespace desk::gui
