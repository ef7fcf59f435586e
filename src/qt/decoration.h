#pragma once

#include <QFocusFrame>
#include <QPointer>

class QApplication;

namespace desk::qt {

/// Drawn beside a control and part of none: the mouse goes through it, and screen readers pass over it, as over every
/// widget of the base class.
class decoration : public QFocusFrame {
    Q_OBJECT

public:
    explicit decoration(QWidget* parent);
};

/// The one mark of the control with the focus: a ring around it. It is on show after the keyboard was used, around a
/// box that takes text always.
class focus_ring final : public QObject {
    Q_OBJECT

public:
    explicit focus_ring(QApplication& application);

    /// The control around which the ring is on show; none: nullptr.
    QWidget* marked() const;

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void follow();

    QPointer<decoration> ring_;
    QPointer<QWidget> focused_;
    bool by_keyboard_ = false;
};

/// The soft shadow of a frame that lies over a view. What lies under it is not dimmed: it can be operated, and its
/// colours show states.
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
