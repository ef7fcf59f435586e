#include "raw_input.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace desk::gui {

namespace {

QString text_of(Qt::Key key) {
    if (key == Qt::Key_Return || key == Qt::Key_Enter) return "\r";
    if (key == Qt::Key_Escape) return "\x1b";
    return key < 0x80 ? QString(QChar(key)).toLower() : QString();
}

/// The focused window. When a box has just closed, the window system focuses the one below.
QWindow* window_with_the_keys() {
    if (QWindow* const w = QGuiApplication::focusWindow()) return w;
    for (const QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && !w->isModal()) return w->windowHandle();
    return nullptr;
}

void send(QEvent::Type type, Qt::Key key, Qt::KeyboardModifiers held, bool repeats) {
    QWindow* const w = window_with_the_keys();
    if (w == nullptr) return;
    qt_handleKeyEvent(w, type, key, held, text_of(key), repeats);
}

} // namespace

void raw_input::press(Qt::Key key, Qt::KeyboardModifiers held) { send(QEvent::KeyPress, key, held, false); }

void raw_input::repeat(Qt::Key key, int times, Qt::KeyboardModifiers held) {
    for (int i = 0; i < times; ++i) {
        send(QEvent::KeyRelease, key, held, true);
        send(QEvent::KeyPress, key, held, true);
    }
}

void raw_input::release(Qt::Key key, Qt::KeyboardModifiers held) { send(QEvent::KeyRelease, key, held, false); }

void raw_input::tap(Qt::Key key, Qt::KeyboardModifiers held) {
    press(key, held);
    release(key, held);
}

QPoint raw_input::in_window(const QString& name, QPoint at) const {
    return ui_driver(window_).find(name).mapTo(&window_, at);
}

void raw_input::press_mouse(const QString& name, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) const {
    QTest::mousePress(window_.windowHandle(), button, held, in_window(name, at));
}

void raw_input::move_mouse(const QString& name, QPoint at) const {
    QTest::mouseMove(window_.windowHandle(), in_window(name, at));
}

void raw_input::release_mouse(const QString& name, QPoint at, Qt::MouseButton button,
                              Qt::KeyboardModifiers held) const {
    QTest::mouseRelease(window_.windowHandle(), button, held, in_window(name, at));
}

void raw_input::click_mouse(const QString& name, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers held) const {
    QTest::mouseClick(window_.windowHandle(), button, held, in_window(name, at));
}

void raw_input::turn_wheel(const QString& name, int notches, Qt::KeyboardModifiers held) const {
    QWidget& w = ui_driver(window_).find(name);
    const QPoint at = w.mapTo(&window_, w.rect().center());
    QWheelEvent turn(at, window_.mapToGlobal(QPointF(at)), {}, {0, 120 * notches}, Qt::NoButton, held,
                     Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&turn);
    qApp->notify(window_.windowHandle(), &turn);
}

std::string raw_input::focused() {
    const QWidget* const w = QApplication::focusWidget();
    return w == nullptr ? "" : w->objectName().toStdString();
}

} // namespace desk::gui
