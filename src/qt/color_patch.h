#pragma once

#include "signal/color_settings.h"
#include "signal/desk_frame.h"

#include <QColor>
#include <QWidget>

namespace desk::qt {

/// Shows the color chosen by the sliders below them, once a Download has set them.
class color_patch final : public QWidget {
    Q_OBJECT

public:
    color_patch(QWidget& frame, const desk_frame& desk, const color_settings& colors);

    void follow();

    const QColor& color() const { return color_; }

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    void update_accessible_name();

    const desk_frame& desk_frame_;
    const color_settings& colors_;
    QColor color_;
    int color_mode_ = 0;
};

} // namespace desk::qt
