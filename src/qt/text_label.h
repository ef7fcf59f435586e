#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

namespace desk::qt {

/// A label whose lines can stand at a pitch of their own, since boxes and buttons beside it stand at that pitch.
class text_label final : public QWidget {
    Q_OBJECT

public:
    explicit text_label(QWidget* parent);

    void set_text(const QString& text);
    /// Pixels from line to line; 0: as the font has it, and long lines are broken.
    void set_line_pitch(double pitch) { line_pitch_ = pitch; }
    /// No back colour: what lies under the label shows.
    void set_colors(const QColor& fore, const std::optional<QColor>& back);

    const QString& text() const { return text_; }

    std::function<void()> on_click;
    std::function<void()> on_move;

protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    void draw_text();

    QString text_;
    double line_pitch_ = 0;
    QColor fore_ = Qt::black;
    std::optional<QColor> back_;
};

} // namespace desk::qt
