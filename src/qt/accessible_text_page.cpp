#include "qt/accessible_text_page.h"

#include "qt/appearance.h"

#include <algorithm>

namespace desk::qt {

QAccessible::State accessible_text_page::state() const {
    QAccessible::State s = QAccessibleWidget::state();
    s.readOnly = true;
    s.multiLine = true;
    s.selectableText = true;
    return s;
}

QString accessible_text_page::text(QAccessible::Text what) const {
    return what == QAccessible::Value ? shown_text(lines().text()) : QAccessibleWidget::text(what);
}

void* accessible_text_page::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

const text_lines& accessible_text_page::lines() const {
    page_.catch_up();
    return page_.lines();
}

int accessible_text_page::position_of(std::size_t offset) const {
    page_.catch_up();
    return page_.position_of(offset);
}

std::size_t accessible_text_page::offset_of(int position) const {
    const text_lines& text = lines();
    auto left = static_cast<std::size_t>(std::max(0, position));
    if (text.is_plain()) {
        // a line break counts as one unit but takes two bytes
        std::size_t line = 0;
        for (std::size_t beyond = text.count(); beyond - line > 1;) {
            const std::size_t middle = line + (beyond - line) / 2;
            (text.begin_of(middle) - middle <= left ? line : beyond) = middle;
        }
        return std::min(left + line, text.end_of(line));
    }
    for (std::size_t line = 0; line < text.count(); ++line) {
        const std::size_t length = shown_length(text.line(line));
        if (left > length) {
            left -= length + 1; // the line break
            continue;
        }
        std::size_t offset = text.begin_of(line);
        for (std::size_t passed = 0; passed < left;) {
            const std::size_t next = text.next_character(offset);
            passed += shown_length(text.text().substr(offset, next - offset));
            offset = next;
        }
        return offset;
    }
    return text.text().size();
}

void accessible_text_page::selection(int index, int* start, int* end) const {
    const bool is_there = index == 0 && selectionCount() == 1;
    *start = is_there ? position_of(page_.selection().begin) : 0;
    *end = is_there ? position_of(page_.selection().end) : 0;
}

int accessible_text_page::selectionCount() const {
    page_.catch_up();
    return page_.anchor() == page_.cursor() ? 0 : 1;
}

void accessible_text_page::addSelection(int start, int end) { setSelection(0, start, end); }

void accessible_text_page::removeSelection(int index) {
    page_.catch_up();
    if (index == 0) page_.select(page_.cursor(), page_.cursor());
}

void accessible_text_page::setSelection(int index, int start, int end) {
    if (index == 0) page_.select(offset_of(start), offset_of(end));
}

int accessible_text_page::cursorPosition() const {
    page_.catch_up();
    return position_of(page_.cursor());
}

void accessible_text_page::setCursorPosition(int position) {
    const std::size_t offset = offset_of(position);
    page_.select(offset, offset);
}

QString accessible_text_page::text(int start, int end) const {
    const std::size_t begin = offset_of(start);
    return shown_text(lines().text().substr(begin, std::max(begin, offset_of(end)) - begin));
}

text_lines::range accessible_text_page::part_at(std::size_t offset, QAccessible::TextBoundaryType kind) const {
    const text_lines& text = lines();
    switch (kind) {
    case QAccessible::CharBoundary:
        return {offset, text.next_character(offset)};
    case QAccessible::WordBoundary:
        return text.word_at(offset);
    case QAccessible::NoBoundary:
        return {0, text.text().size()};
    default:
        return text.whole_line(text.line_at(offset));
    }
}

QString accessible_text_page::part_text(text_lines::range part, int* start, int* end) const {
    *start = position_of(part.begin);
    QString result = shown_text(lines().text().substr(part.begin, part.end - part.begin));
    *end = *start + static_cast<int>(result.size());
    return result;
}

QString accessible_text_page::textBeforeOffset(int position, QAccessible::TextBoundaryType kind, int* start,
                                               int* end) const {
    const text_lines::range here = part_at(offset_of(position), kind);
    if (here.begin == 0) return part_text({0, 0}, start, end);
    return part_text(part_at(lines().previous_character(here.begin), kind), start, end);
}

QString accessible_text_page::textAfterOffset(int position, QAccessible::TextBoundaryType kind, int* start,
                                              int* end) const {
    const std::size_t offset = offset_of(position);
    const text_lines::range here = part_at(offset, kind);
    const std::size_t all = lines().text().size();
    if (here.end >= all) return part_text({all, all}, start, end);
    // an empty line holds no word
    return part_text(part_at(std::max(here.end, lines().next_character(offset)), kind), start, end);
}

QString accessible_text_page::textAtOffset(int position, QAccessible::TextBoundaryType kind, int* start,
                                           int* end) const {
    return part_text(part_at(offset_of(position), kind), start, end);
}

int accessible_text_page::characterCount() const { return position_of(lines().text().size()); }

QRect accessible_text_page::characterRect(int position) const {
    const QRect place = page_.place_of(offset_of(position));
    return {page_.viewport()->mapToGlobal(place.topLeft()), place.size()};
}

int accessible_text_page::offsetAtPoint(const QPoint& point) const {
    page_.catch_up();
    return position_of(page_.offset_at(page_.viewport()->mapFromGlobal(point)));
}

void accessible_text_page::scrollToSubstring(int start, int end) {
    page_.scroll_to(offset_of(end));
    page_.scroll_to(offset_of(start));
}

QString accessible_text_page::attributes(int /*position*/, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

} // namespace desk::qt
