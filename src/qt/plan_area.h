#pragma once

#include <QScrollArea>

namespace desk::qt {

/// Contains the plan of a window: centred, or with scroll bars if it does not fit. Takes no focus, and no keys unless
/// there is something to scroll.
class plan_area final : public QScrollArea {
    Q_OBJECT

public:
    explicit plan_area(QWidget* window);

    QWidget& plan() const { return *widget(); }
    bool scrolls() const;
    /// Scrolls to a newly focused control.
    void ensure_visible(QWidget& control);

protected:
    void keyPressEvent(QKeyEvent* e) override;
};

} // namespace desk::qt
