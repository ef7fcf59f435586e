#pragma once

#include <QFocusFrame>
#include <QPointer>

class QApplication;

namespace desk::qt {

/// Drawn around a control but not part of it: ignores the mouse and is hidden from screen readers, as every
/// QFocusFrame is.
class decoration : public QFocusFrame {
    Q_OBJECT

public:
    explicit decoration(QWidget* parent);
};

/// Draws a ring around the focused control, once the keyboard has been used; text boxes always have it.
class focus_ring final : public QObject {
    Q_OBJECT

public:
    explicit focus_ring(QApplication& application);

    /// The control with the visible ring, or nullptr.
    QWidget* marked() const;

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void follow();

    QPointer<decoration> ring_;
    QPointer<QWidget> focused_;
    bool by_keyboard_ = false;
};

/// The soft shadow of a frame over a view. The view is not dimmed: it stays usable, and its colours show states.
class overlay_shadow final : public decoration {
    Q_OBJECT

public:
    explicit overlay_shadow(QWidget& overlay);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void follow();
    QWidget& overlay_;
};

} // namespace desk::qt
