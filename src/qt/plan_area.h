#pragma once

#include <QScrollArea>

namespace desk::qt {

/// Holds the plan of a window: in the middle of what is left over, or behind scroll bars where it doesn't fit. It takes
/// no focus, and no keys while there is nothing to scroll.
class plan_area final : public QScrollArea {
    Q_OBJECT

public:
    explicit plan_area(QWidget* window);

    QWidget& plan() const { return *widget(); }
    bool scrolls() const;
    /// Scrolls to a control that has got the focus.
    void bring_into_sight(QWidget& control);

protected:
    void keyPressEvent(QKeyEvent* e) override;
};

} // namespace desk::qt
