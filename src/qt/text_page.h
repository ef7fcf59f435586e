#pragma once

#include "controls/controls.h"
#include "controls/text_lines.h"
#include "qt/appearance.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace desk::qt {

/// Shows the text of a read-only box in fixed pitch. Draws the visible lines directly from the model's text, so a
/// long text takes little extra memory. Supports selecting and copying by mouse and keyboard.
class text_page : public QAbstractScrollArea {
    Q_OBJECT

public:
    text_page(const text_box& model, QWidget* parent);

    /// Changes the text size; the same lines stay visible.
    void set_scale(double scale);

    /// Reads what was appended to the model's text, or all of a new text. Every event calls it first, since the model
    /// can change before its widget is updated.
    void catch_up();
    const text_lines& lines() const { return lines_; }

    /// Highlights parts of the text, given in order.
    void set_marks(std::vector<text_lines::range> marks);
    const std::vector<text_lines::range>& marks() const { return marks_; }

    /// Text offsets: the cursor, and the other end of the selection.
    std::size_t cursor() const { return cursor_; }
    std::size_t anchor() const { return anchor_; }
    text_lines::range selection() const;
    /// Selects the text between two offsets and scrolls to the second.
    void select(std::size_t anchor, std::size_t cursor);
    void select_all();
    void copy();
    /// Converts an offset to UTF-16 units, as screen readers count.
    int position_of(std::size_t offset) const;

    /// The place of a character in the viewport, visible or not.
    QRect place_of(std::size_t offset) const;
    /// The offset nearest to a point of the viewport.
    std::size_t offset_at(QPoint point) const;
    void scroll_to(std::size_t offset);

protected:
    bool viewportEvent(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void changeEvent(QEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    void timerEvent(QTimerEvent* e) override;

private:
    enum class unit { character, word, line };

    void set_selection(std::size_t anchor, std::size_t cursor);
    int visible_lines() const;
    /// Line pitch: a little less than the font's, so that more lines fit and none touch.
    int line_height() const;
    /// Start of a column in pixels, relative to the first one.
    int column_place(std::size_t column) const;
    void set_scroll_ranges();
    /// Extends the selection to a point by whole units.
    void extend_to(QPoint point);
    text_lines::range unit_at(std::size_t offset) const;
    void offer_selection() const;
    void draw_line(QPainter& painter, std::size_t line) const;
    void draw_marks(QPainter& painter, std::size_t line, const QRect& row) const;
    bool move_cursor(const QKeyEvent& e);
    void move_lines(long long count, bool selects);
    void autoscroll();

    const text_box& model_;
    text_lines lines_;
    std::vector<text_lines::range> marks_;
    double cell_ = cell_width;
    std::optional<double> kept_column_; // first visible column, while the scale changes
    int replacements_ = -1;
    std::size_t anchor_ = 0;
    std::size_t cursor_ = 0;
    std::size_t column_ = 0; // kept by moving up and down
    bool keeps_column_ = false;
    unit unit_ = unit::character;
    text_lines::range first_unit_; // where the current mouse selection began
    QPoint pointer_;
    QBasicTimer autoscroll_;
    QElapsedTimer since_double_click_;
};

} // namespace desk::qt
