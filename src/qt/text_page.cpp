#include "qt/text_page.h"

#include "qt/appearance.h"
#include "qt/scheme.h"
#include "qt/text_on_clipboard.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleHints>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace desk::qt {

namespace {

constexpr int margin = 4;
constexpr int columns_per_step = 3;
constexpr int edge_ms = 50;
constexpr std::size_t longest_announced = 4096;

/// The space above capital letters.
int accent_room(const QFontMetrics& metrics) { return metrics.ascent() - metrics.capHeight(); }

QString shown(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

std::size_t clamped(long long value, std::size_t most) {
    return static_cast<std::size_t>(std::clamp(value, 0LL, static_cast<long long>(most)));
}

} // namespace

text_page::text_page(const text_box& model, QWidget* parent) : QAbstractScrollArea(parent), model_(model) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    set_scale(1);
}

void text_page::set_scale(double scale) {
    // the scroll ranges wait for the new size, so that the visible lines are not lost in between
    if (!kept_column_) kept_column_ = horizontalScrollBar()->value() / cell_;
    cell_ = cell_width * scale;
    setFont(font_of(model_.font, scale));
    horizontalScrollBar()->setSingleStep(qRound(columns_per_step * cell_));
}

void text_page::catch_up() {
    const std::string& text = model_.text.get();
    const bool replaced = replacements_ != model_.text.replacements();
    if (!replaced && text.size() == lines_.text().size()) return;
    const std::size_t old_size = replaced ? 0 : lines_.text().size();
    if (replaced)
        lines_.replace(text);
    else
        lines_.grow(text);
    if (replaced) marks_.clear();
    replacements_ = model_.text.replacements();
    set_scroll_ranges();
    if (replaced) {
        autoscroll_.stop();
        unit_ = unit::character;
        first_unit_ = {};
        anchor_ = cursor_ = 0;
        keeps_column_ = false;
        // a different text starts at the top left
        verticalScrollBar()->setValue(0);
        horizontalScrollBar()->setValue(0);
    }
    viewport()->update();
    // nobody has a longer text read aloud
    if (lines_.text().size() - old_size <= longest_announced) {
        QAccessibleTextInsertEvent e(this, position_of(old_size), shown_text(lines_.text().substr(old_size)));
        QAccessible::updateAccessibility(&e);
    }
}

int text_page::line_height() const {
    // a font reserves that space for accents
    const QFontMetrics metrics = fontMetrics();
    return metrics.lineSpacing() - accent_room(metrics);
}

int text_page::visible_lines() const { return std::max(1, (viewport()->height() - margin) / line_height()); }

void text_page::set_scroll_ranges() {
    const int visible = visible_lines();
    verticalScrollBar()->setPageStep(visible);
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(lines_.count()) - visible));
    const int width = column_place(lines_.longest()) + 2 * margin;
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
    if (kept_column_) horizontalScrollBar()->setValue(qRound(*kept_column_ * cell_));
    kept_column_.reset();
}

int text_page::column_place(std::size_t column) const {
    constexpr double widest = std::numeric_limits<int>::max() / 2;
    return qRound(std::min(widest, static_cast<double>(column) * cell_));
}

void text_page::set_marks(std::vector<text_lines::range> marks) {
    marks_ = std::move(marks);
    viewport()->update();
}

text_lines::range text_page::selection() const { return {std::min(anchor_, cursor_), std::max(anchor_, cursor_)}; }

void text_page::select(std::size_t anchor, std::size_t cursor) {
    set_selection(anchor, cursor);
    scroll_to(cursor_);
}

void text_page::select_all() {
    catch_up();
    set_selection(0, lines_.text().size());
    offer_selection();
}

void text_page::set_selection(std::size_t anchor, std::size_t cursor) {
    const bool selects = anchor != cursor || anchor_ != cursor_;
    const bool changes = anchor != anchor_ || cursor != cursor_;
    anchor_ = anchor;
    cursor_ = cursor;
    keeps_column_ = false;
    viewport()->update();
    if (!changes) return;
    if (selects) {
        QAccessibleTextSelectionEvent e(this, position_of(anchor_), position_of(cursor_));
        QAccessible::updateAccessibility(&e);
    } else {
        QAccessibleTextCursorEvent e(this, position_of(cursor_));
        QAccessible::updateAccessibility(&e);
    }
}

void text_page::copy() {
    catch_up();
    const text_lines::range part = selection();
    if (part.begin == part.end) return;
    QApplication::clipboard()->setMimeData(
        new text_on_clipboard(lines_.text().substr(part.begin, part.end - part.begin)));
}

void text_page::offer_selection() const {
    QClipboard* const clipboard = QApplication::clipboard();
    const text_lines::range part = selection();
    if (part.begin == part.end || !clipboard->supportsSelection()) return;
    clipboard->setMimeData(new text_on_clipboard(lines_.text().substr(part.begin, part.end - part.begin)),
                           QClipboard::Selection);
}

int text_page::position_of(std::size_t offset) const {
    if (lines_.is_plain()) return static_cast<int>(offset - lines_.line_at(offset));
    return static_cast<int>(shown_length(lines_.text().substr(0, offset)));
}

QRect text_page::place_of(std::size_t offset) const {
    const std::size_t line = lines_.line_at(offset);
    const int height = line_height();
    const auto row = static_cast<long long>(line) - verticalScrollBar()->value();
    const std::size_t column = lines_.column_at(offset);
    const int left = column_place(column);
    return {margin + left - horizontalScrollBar()->value(), margin + static_cast<int>(row) * height,
            column_place(column + 1) - left, height};
}

std::size_t text_page::offset_at(QPoint point) const {
    const int height = line_height();
    // negative rows are rounded down too
    const int row = (point.y() - margin + height) / height - 1;
    const std::size_t line = clamped(verticalScrollBar()->value() + static_cast<long long>(row), lines_.count() - 1);
    const int x = point.x() - margin + horizontalScrollBar()->value();
    const double column = std::max(0.0, x / cell_ + 0.5);
    return lines_.offset_of(line, static_cast<std::size_t>(column));
}

void text_page::scroll_to(std::size_t offset) {
    const int line = static_cast<int>(lines_.line_at(offset));
    QScrollBar& down = *verticalScrollBar();
    if (line < down.value())
        down.setValue(line);
    else if (line >= down.value() + visible_lines())
        down.setValue(line - visible_lines() + 1);
    QScrollBar& across = *horizontalScrollBar();
    const QRect place = place_of(offset);
    if (place.left() < margin)
        across.setValue(across.value() + place.left() - margin);
    else if (place.right() > viewport()->width() - margin)
        across.setValue(across.value() + place.right() - viewport()->width() + margin);
}

bool text_page::viewportEvent(QEvent* e) {
    catch_up();
    return QAbstractScrollArea::viewportEvent(e);
}

void text_page::paintEvent(QPaintEvent* e) {
    QPainter painter(viewport());
    painter.setFont(font());
    const int height = line_height();
    const auto first = static_cast<std::size_t>(verticalScrollBar()->value());
    const int rows = e->rect().bottom() / height + 1;
    for (std::size_t line = first; line < std::min(lines_.count(), first + static_cast<std::size_t>(rows)); ++line)
        draw_line(painter, line);
    if (!hasFocus()) return;
    QRect mark = place_of(cursor_);
    mark.setWidth(1);
    painter.fillRect(mark, palette().color(QPalette::Text));
}

void text_page::draw_line(QPainter& painter, std::size_t line) const {
    // only the visible part of a long line is drawn
    const int scrolled = horizontalScrollBar()->value();
    const auto first_column = static_cast<std::size_t>(std::max(0, scrolled - margin) / cell_);
    const auto columns = static_cast<std::size_t>(viewport()->width() / cell_ + 2);
    const std::size_t begin = lines_.offset_of(line, first_column);
    std::size_t end = begin;
    for (std::size_t i = 0; i < columns && end < lines_.end_of(line); ++i)
        end = lines_.next_character(end);
    const std::string_view text = lines_.text().substr(begin, end - begin);

    const QRect row(0, place_of(lines_.begin_of(line)).top(), viewport()->width(), line_height());
    const int left = margin + column_place(first_column) - scrolled;
    const QPoint base(left, row.top() + fontMetrics().ascent() - accent_room(fontMetrics()));
    draw_marks(painter, line, row);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(base, shown(text));

    const text_lines::range part = selection();
    const text_lines::range whole = lines_.whole_line(line);
    if (part.end <= std::max(begin, whole.begin) || part.begin >= whole.end) return;
    const int from = part.begin <= begin ? left : place_of(part.begin).left();
    // a selected line end is one cell wide
    const int to =
        part.end > lines_.end_of(line) ? place_of(lines_.end_of(line)).right() + 1 : place_of(part.end).left();
    if (to <= from) return;
    const QRect selected = QRect(from, row.top(), to - from, row.height()) & row;
    const QPalette::ColorGroup group = !isEnabled() ? QPalette::Disabled
                                       : hasFocus() ? QPalette::Active
                                                    : QPalette::Inactive;
    painter.fillRect(selected, palette().color(group, QPalette::Highlight));
    painter.setClipRect(selected);
    painter.setPen(palette().color(group, QPalette::HighlightedText));
    painter.drawText(base, shown(text));
    painter.setClipping(false);
}

void text_page::draw_marks(QPainter& painter, std::size_t line, const QRect& row) const {
    const auto first = std::lower_bound(marks_.begin(), marks_.end(), lines_.begin_of(line),
                                        [](const text_lines::range& m, std::size_t at) { return m.begin < at; });
    for (auto m = first; m != marks_.end() && m->end <= lines_.end_of(line); ++m) {
        const int left = place_of(m->begin).left();
        painter.fillRect(QRect(left, row.top(), place_of(m->end).left() - left, row.height()),
                         colors_of(palette()).difference);
    }
}

void text_page::resizeEvent(QResizeEvent* /*e*/) { set_scroll_ranges(); }

void text_page::changeEvent(QEvent* e) {
    QAbstractScrollArea::changeEvent(e);
    if (e->type() == QEvent::FontChange && !kept_column_) set_scroll_ranges();
    viewport()->update();
}

text_lines::range text_page::unit_at(std::size_t offset) const {
    switch (unit_) {
    case unit::word:
        return lines_.word_at(offset);
    case unit::line:
        return lines_.whole_line(lines_.line_at(offset));
    case unit::character:
        break;
    }
    return {offset, offset};
}

void text_page::extend_to(QPoint point) {
    const text_lines::range last = unit_at(offset_at(point));
    if (last.begin < first_unit_.begin)
        select(first_unit_.end, last.begin);
    else
        select(first_unit_.begin, std::max(first_unit_.end, last.end));
}

void text_page::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    const bool third = since_double_click_.isValid() &&
                       since_double_click_.elapsed() < QApplication::doubleClickInterval() &&
                       (e->position().toPoint() - pointer_).manhattanLength() < QApplication::startDragDistance();
    since_double_click_.invalidate();
    pointer_ = e->position().toPoint();
    unit_ = third ? unit::line : unit::character;
    if ((e->modifiers() & Qt::ShiftModifier) != 0)
        first_unit_ = {anchor_, anchor_};
    else
        first_unit_ = unit_at(offset_at(pointer_));
    extend_to(pointer_);
}

void text_page::mouseDoubleClickEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    since_double_click_.start();
    pointer_ = e->position().toPoint();
    unit_ = unit::word;
    // the character under the pointer, even if its end is nearer
    first_unit_ = unit_at(offset_at(pointer_ - QPoint(qRound(cell_ / 2), 0)));
    select(first_unit_.begin, first_unit_.end);
}

void text_page::mouseMoveEvent(QMouseEvent* e) {
    if ((e->buttons() & Qt::LeftButton) == 0) return;
    pointer_ = e->position().toPoint();
    extend_to(pointer_);
    if (viewport()->rect().contains(pointer_))
        autoscroll_.stop();
    else if (!autoscroll_.isActive())
        autoscroll_.start(edge_ms, this);
}

void text_page::mouseReleaseEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    autoscroll_.stop();
    offer_selection();
}

void text_page::timerEvent(QTimerEvent* e) {
    if (e->timerId() != autoscroll_.timerId()) return QAbstractScrollArea::timerEvent(e);
    catch_up();
    // the release is lost if another window takes the mouse
    if ((QApplication::mouseButtons() & Qt::LeftButton) == 0) return autoscroll_.stop();
    autoscroll();
}

void text_page::autoscroll() {
    const QRect sight = viewport()->rect();
    const auto scroll = [](QScrollBar& bar, int before, int after, int step) {
        const int distance = before > 0 ? -before : std::max(0, after);
        if (distance != 0) bar.setValue(bar.value() + (distance / cell_height + (distance > 0 ? 1 : -1)) * step);
    };
    scroll(*verticalScrollBar(), sight.top() - pointer_.y(), pointer_.y() - sight.bottom(), 1);
    scroll(*horizontalScrollBar(), sight.left() - pointer_.x(), pointer_.x() - sight.right(), qRound(cell_));
    extend_to(pointer_);
}

void text_page::contextMenuEvent(QContextMenuEvent* e) {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* const copying = menu->addAction("&Copy", QKeySequence::Copy, this, &text_page::copy);
    copying->setEnabled(anchor_ != cursor_);
    menu->addSeparator();
    QAction* const all = menu->addAction("Select All", QKeySequence::SelectAll, this, &text_page::select_all);
    all->setEnabled(!lines_.text().empty());
    const bool by_key = e->reason() == QContextMenuEvent::Keyboard;
    menu->popup(by_key ? viewport()->mapToGlobal(place_of(cursor_).bottomLeft()) : e->globalPos());
}

void text_page::move_lines(long long count, bool selects) {
    const std::size_t line = lines_.line_at(cursor_);
    const std::size_t column = keeps_column_ ? column_ : lines_.column_at(cursor_);
    const std::size_t to = lines_.offset_of(clamped(static_cast<long long>(line) + count, lines_.count() - 1), column);
    select(selects ? anchor_ : to, to);
    column_ = column;
    keeps_column_ = true;
}

bool text_page::move_cursor(const QKeyEvent& e) {
    using keys = QKeySequence;
    const long long page = visible_lines();
    const auto by_lines = [&](keys::StandardKey move, keys::StandardKey selecting, long long count) {
        const bool selects = e.matches(selecting);
        if (!selects && !e.matches(move)) return false;
        // a page key scrolls as far as the cursor moves
        if (std::abs(count) == page) verticalScrollBar()->setValue(verticalScrollBar()->value() + int(count));
        move_lines(count, selects);
        return true;
    };
    if (by_lines(keys::MoveToNextLine, keys::SelectNextLine, 1) ||
        by_lines(keys::MoveToPreviousLine, keys::SelectPreviousLine, -1) ||
        by_lines(keys::MoveToNextPage, keys::SelectNextPage, page) ||
        by_lines(keys::MoveToPreviousPage, keys::SelectPreviousPage, -page))
        return true;

    const std::size_t line = lines_.line_at(cursor_);
    struct step {
        keys::StandardKey move;
        keys::StandardKey selecting;
        std::size_t to;
    };
    const std::array steps = {
        step{keys::MoveToNextChar, keys::SelectNextChar, lines_.next_character(cursor_)},
        step{keys::MoveToPreviousChar, keys::SelectPreviousChar, lines_.previous_character(cursor_)},
        step{keys::MoveToNextWord, keys::SelectNextWord, lines_.next_word(cursor_)},
        step{keys::MoveToPreviousWord, keys::SelectPreviousWord, lines_.previous_word(cursor_)},
        step{keys::MoveToStartOfLine, keys::SelectStartOfLine, lines_.begin_of(line)},
        step{keys::MoveToEndOfLine, keys::SelectEndOfLine, lines_.end_of(line)},
        step{keys::MoveToStartOfDocument, keys::SelectStartOfDocument, 0},
        step{keys::MoveToEndOfDocument, keys::SelectEndOfDocument, lines_.text().size()},
    };
    for (const step& s : steps) {
        const bool selects = e.matches(s.selecting);
        if (!selects && !e.matches(s.move)) continue;
        select(selects ? anchor_ : s.to, s.to);
        return true;
    }
    return false;
}

void text_page::keyPressEvent(QKeyEvent* e) {
    catch_up();
    const text_lines::range before = selection();
    if (e->matches(QKeySequence::Copy)) {
        copy();
    } else if (e->matches(QKeySequence::SelectAll)) {
        select_all();
    } else if (e->key() == Qt::Key_Space) {
        const bool up = (e->modifiers() & Qt::ShiftModifier) != 0;
        verticalScrollBar()->triggerAction(up ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
    } else if (move_cursor(*e)) {
        if (before.begin != selection().begin || before.end != selection().end) offer_selection();
    } else {
        e->ignore();
    }
}

void text_page::focusInEvent(QFocusEvent* e) {
    QAbstractScrollArea::focusInEvent(e);
    viewport()->update();
}

void text_page::focusOutEvent(QFocusEvent* e) {
    QAbstractScrollArea::focusOutEvent(e);
    viewport()->update();
}

} // namespace desk::qt
