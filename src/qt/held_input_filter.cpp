#include "qt/held_input_filter.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <cstring>
#include <utility>

namespace desk::qt {

namespace {

/// Longer than the delay before auto-repeat. A key silent for this long is up; another program got its release.
constexpr int silence_limit_ms = 1200;

bool is_modifier(int key) {
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

/// Whether auto-repeat of a key is harmless: it moves or types.
bool may_repeat(const QKeyEvent& e) {
    if ((e.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) != 0) return false;
    switch (e.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return false;
    default:
        const QWidget* const focused = QApplication::focusWidget();
        return focused != nullptr && focused->testAttribute(Qt::WA_InputMethodEnabled);
    }
}

} // namespace

held_input_filter::held_input_filter() {
    clock_.start();
    QCoreApplication::instance()->installEventFilter(this);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool held_input_filter::eventFilter(QObject* watched, QEvent* e) {
    // key and mouse events reach a window before its widgets
    if (watched->isWindowType()) return filter_window_event(*e);
    switch (e->type()) {
    case QEvent::ApplicationStateChange:
        // releases now go to another program
        if (QGuiApplication::applicationState() != Qt::ApplicationActive) {
            down_.clear();
            held_.clear();
        }
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (watched->isWidgetType() && !under_mouse_) under_mouse_ = static_cast<QWidget*>(watched);
        break;
    case QEvent::Show:
        if (watched->isWidgetType() && !e->spontaneous()) window_opens(*static_cast<QWidget*>(watched));
        break;
    default:
        break;
    }
    return false;
}

bool held_input_filter::filter_window_event(QEvent& e) {
    switch (e.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return filter_key(static_cast<QKeyEvent&>(e));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return filter_mouse(static_cast<QMouseEvent&>(e));
    default:
        return false;
    }
}

held_input_filter::key_code held_input_filter::code_of(const QKeyEvent& e) {
    // Qt::Key differs if Shift was released first
    return e.nativeScanCode() != 0 ? e.nativeScanCode() : static_cast<key_code>(e.key());
}

bool held_input_filter::filter_key(QKeyEvent& e) {
    if (is_modifier(e.key())) return false;
    const key_code key = code_of(e);
    const bool repeats =
        e.isAutoRepeat() || (last_release_.key == key && last_release_.time == static_cast<x_time>(e.timestamp()));
    if (e.type() == QEvent::KeyRelease) {
        if (!e.isAutoRepeat()) release(key);
        return false;
    }
    if (repeats) {
        if (down_.count(key) != 0) down_[key] = clock_.elapsed();
        if (!waits() && may_repeat(e)) return false;
    } else {
        // pressed again: its release was missed
        if (down_.insert_or_assign(key, clock_.elapsed()).second || e.type() == QEvent::KeyPress) held_.erase(key);
        if (!waits()) return false;
    }
    // accepting the override keeps it from triggering a shortcut
    e.accept();
    return true;
}

void held_input_filter::release(key_code key) {
    down_.erase(key);
    held_.erase(key);
}

bool held_input_filter::filter_mouse(const QMouseEvent& e) {
    switch (e.type()) {
    case QEvent::MouseButtonPress:
        // pressed again: its release was missed
        held_buttons_ &= ~Qt::MouseButtons(e.button());
        under_mouse_ = nullptr;
        if ((e.flags() & Qt::MouseEventCreatedDoubleClick) == 0) opened_since_press_ = false;
        return waits();
    case QEvent::MouseButtonDblClick:
        // half of a double click was meant for what was there before
        return waits() || opened_since_press_;
    case QEvent::MouseMove:
        held_buttons_ &= e.buttons();
        // the control under the press has been released
        return held_buttons_ != Qt::NoButton;
    default:
        return false;
    }
}

void held_input_filter::window_opens(const QWidget& w) {
    if (!w.isWindow()) return;
    if (w.windowType() == Qt::Popup) return release_pressed();
    if (!w.isModal()) return;
    release_pressed();
    forget_silent_keys();
    for (const auto& [key, sign_of_life] : down_)
        held_.insert(key);
    held_buttons_ = QGuiApplication::mouseButtons();
    opened_since_press_ = true;
}

void held_input_filter::release_pressed() {
    if (auto* const pressed = qobject_cast<QAbstractButton*>(QApplication::focusWidget())) pressed->setDown(false);
    if (QWidget* const grabber = QWidget::mouseGrabber()) grabber->releaseMouse();
    if (!under_mouse_) return;
    const QPointer<QWidget> w = std::exchange(under_mouse_, nullptr);
    // as if released far away, without any signal
    const QSignalBlocker quiet(w);
    const QPointF away(-10'000, -10'000);
    for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
        if (!w || (QGuiApplication::mouseButtons() & button) == 0) continue;
        QMouseEvent release(QEvent::MouseButtonRelease, away, away, away, button, Qt::NoButton, Qt::NoModifier,
                            Qt::MouseEventSynthesizedByApplication);
        QCoreApplication::sendEvent(w, &release);
    }
}

void held_input_filter::forget_silent_keys() {
    const qint64 now = clock_.elapsed();
    std::erase_if(down_, [now](const auto& key) { return now - key.second > silence_limit_ms; });
    std::erase_if(held_, [this](key_code key) { return down_.count(key) == 0; });
}

bool held_input_filter::waits() {
    held_buttons_ &= QGuiApplication::mouseButtons();
    forget_silent_keys();
    return !held_.empty() || held_buttons_ != Qt::NoButton;
}

bool held_input_filter::nativeEventFilter(const QByteArray& system, void* message, qintptr* /*result*/) {
    if (system != "xcb_generic_event_t") return false;
    struct {
        std::uint8_t type;
        std::uint8_t detail;
        std::uint16_t sequence;
        x_time time;
    } head{};
    std::memcpy(&head, message, sizeof head);
    constexpr int key_press = 2;
    constexpr int key_release = 3;
    const int type = head.type & 0x7F;
    if (type == key_release) {
        last_release_ = {head.detail, head.time, held_.count(head.detail) != 0};
        release(head.detail);
    } else if (type == key_press && last_release_.key == head.detail && last_release_.time == head.time) {
        // auto-repeat sends a release and a press with the same time
        down_[head.detail] = clock_.elapsed();
        if (last_release_.was_held) held_.insert(head.detail);
    }
    return false;
}

} // namespace desk::qt
