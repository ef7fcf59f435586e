#pragma once

#include "hand.h"

#include <QPoint>
#include <QString>

namespace desk::gui {

/// A hand that holds keys and mouse buttons down. Keys go to the window that has the keys, as the window system sends
/// them; over a box that is the box.
class holding_hand {
public:
    explicit holding_hand(QWidget& w) : window_(w) {}

    static void press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);
    /// What the window system sends while the key stays down.
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
    /// One notch, over the middle of a control; negative turns the wheel towards the operator.
    void turn_wheel(const QString& name, int notches, Qt::KeyboardModifiers held = Qt::NoModifier) const;

    /// The widget that has the keys, by its name; empty: none has.
    static std::string focused();

private:
    QPoint in_window(const QString& name, QPoint at) const;

    QWidget& window_;
};

} // namespace desk::gui
