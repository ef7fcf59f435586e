#pragma once

#include "controls/controls.h"
#include "controls/text_lines.h"
#include "qt/look.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace desk::qt {

/// Shows the text of a locked box in fixed pitch. It draws the visible lines straight from the model's text, so a long
/// text takes little more memory than the model alone. The operator selects and copies with mouse and keyboard.
class text_page : public QAbstractScrollArea {
    Q_OBJECT

public:
    text_page(const text_box& model, QWidget* parent);

    /// Draws the text larger or smaller; the same lines stay in sight.
    void set_scale(double scale);

    /// Reads what the model's text has gained, or all of another text. Every event calls it first, since the model can
    /// change before its face follows.
    void catch_up();
    const text_lines& lines() const { return lines_; }

    /// Gives parts of the text, in their order, another ground.
    void set_marks(std::vector<text_lines::range> marks);
    const std::vector<text_lines::range>& marks() const { return marks_; }

    /// Offsets of the text: where the cursor is, and where the selection begins that ends there.
    std::size_t cursor() const { return cursor_; }
    std::size_t anchor() const { return anchor_; }
    text_lines::range selection() const;
    /// Selects what lies between two offsets and scrolls to the second.
    void select(std::size_t anchor, std::size_t cursor);
    void select_all();
    void copy();
    /// An offset as screen readers count: in UTF-16 units of the shown text.
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

    /// Selects without scrolling.
    void set_selection(std::size_t anchor, std::size_t cursor);
    int visible_lines() const;
    /// From line to line: a little less than the font's own, so that more lines fit and none touches another.
    int line_height() const;
    /// Where a column begins, in pixels from the first one.
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
    void scroll_beyond_edge();

    const text_box& model_;
    text_lines lines_;
    std::vector<text_lines::range> marks_;
    double cell_ = cell_width;
    std::optional<double> kept_column_; // the first one in sight, while the scale changes
    int replacements_ = -1;
    std::size_t anchor_ = 0;
    std::size_t cursor_ = 0;
    std::size_t column_ = 0; // that moving up and down keeps to
    bool keeps_column_ = false;
    unit unit_ = unit::character;
    text_lines::range first_unit_; // that the present selection by mouse began with
    QPoint pointer_;
    QBasicTimer beyond_edge_;
    QElapsedTimer since_double_click_;
};

} // namespace desk::qt
