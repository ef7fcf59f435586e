#pragma once

#include "controls/color.h"

#include <QString>
#include <QWidget>

#include <functional>

namespace desk::qt {

/// A label with an optional line pitch, which matches the boxes and buttons beside it.
class text_label final : public QWidget {
    Q_OBJECT

public:
    explicit text_label(QWidget* parent);

    void set_text(const QString& text);
    /// Pixels per line; 0: the font's own pitch, with word wrap.
    void set_line_pitch(double pitch) { line_pitch_ = pitch; }
    /// Centred vertically, or at the top.
    void set_in_middle(bool in_middle) { in_middle_ = in_middle; }
    /// `color_button_face` as `back` is transparent.
    void set_colors(color fore, color back);

    const QString& text() const { return text_; }
    bool has_line_pitch() const { return line_pitch_ != 0; }

    std::function<void()> on_click;
    std::function<void()> on_move;

protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    /// The colour behind the text.
    QColor background() const;
    void draw_lines(QPainter& painter, const QRect& place) const;

    QString text_;
    double line_pitch_ = 0;
    bool in_middle_ = false;
    color fore_ = color_black;
    color back_ = color_button_face;
};

} // namespace desk::qt
